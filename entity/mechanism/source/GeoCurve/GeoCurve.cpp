#include <host/tools/GeoCurve.h>

GeoCurve::GeoCurve(const GeoCurve& other) = default;
GeoCurve& GeoCurve::operator=(const GeoCurve& other) = default;

const TopoDS_Edge& GeoCurve::GetOriTopoEdge() const { return oriTopoEdge; }
TopoDS_Face* GeoCurve::GetTruncatedPlane() { return truncatedPlane.data(); }
EdgeType GeoCurve::GetCurveEdgeType() { return edgeType; }
void GeoCurve::SetCurveEdgeType(const EdgeType& type) { edgeType = type; }
