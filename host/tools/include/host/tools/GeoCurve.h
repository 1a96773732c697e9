#pragma once

#include <Standard_Transient.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <array>
#include <cstdint>
#include <host/tools/SharedRecord.h>
#include <string>

/// What kind of curve an edge stands for.
enum EdgeType : int { EdgeOther = 0, EdgeLine = 1, EdgeCircle = 2, EdgeSpline = 3 };

/// A curve, the edge it comes from and the planes it is cut at. Copies share handles and topology.
class GeoCurve {
public:
    GeoCurve() = default;
    MECHANISM_SHARED_RECORD GeoCurve(const GeoCurve& other);
    MECHANISM_SHARED_RECORD GeoCurve& operator=(const GeoCurve& other);
    ~GeoCurve() = default;

    MECHANISM_SHARED_RECORD const TopoDS_Edge& GetOriTopoEdge() const;
    /// The first of the two planes; the second follows it.
    MECHANISM_SHARED_RECORD TopoDS_Face* GetTruncatedPlane();
    MECHANISM_SHARED_RECORD EdgeType GetCurveEdgeType();
    MECHANISM_SHARED_RECORD void SetCurveEdgeType(const EdgeType& type);

    opencascade::handle<Standard_Transient> first;  ///< the curve
    opencascade::handle<Standard_Transient> second; ///< what it lies on, or null

private:
    std::array<TopoDS_Face, 2> truncatedPlane;

public:
    std::uint64_t values[2] = {};
    std::string text;

private:
    EdgeType edgeType = EdgeOther;

public:
    TopoDS_Edge oriTopoEdge;
};
