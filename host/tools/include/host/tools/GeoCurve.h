#pragma once

#include <Standard_Transient.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <array>
#include <cstdint>
#include <host/tools/SharedRecord.h>
#include <string>

/// Kind of the curve of an edge.
enum EdgeType : int { EdgeOther = 0, EdgeLine = 1, EdgeCircle = 2, EdgeSpline = 3 };

/// A curve, the edge it comes from and the planes it is cut at. Copies share handles and topology.
class GeoCurve {
public:
    GeoCurve() = default;
    /// Shares the other's handles and topology and copies the rest.
    MECHANISM_SHARED_RECORD GeoCurve(const GeoCurve& other);
    /// As the copy constructor.
    MECHANISM_SHARED_RECORD GeoCurve& operator=(const GeoCurve& other);
    ~GeoCurve() = default;

    /// The edge that the curve comes from.
    MECHANISM_SHARED_RECORD const TopoDS_Edge& GetOriTopoEdge() const;
    /// The two planes that the curve is cut at: pointer to the first of two faces, writable.
    MECHANISM_SHARED_RECORD TopoDS_Face* GetTruncatedPlane();
    /// Kind of the curve.
    MECHANISM_SHARED_RECORD EdgeType GetCurveEdgeType();
    /// Sets the kind of the curve.
    MECHANISM_SHARED_RECORD void SetCurveEdgeType(const EdgeType& type);

    opencascade::handle<Standard_Transient> first;  ///< the curve
    opencascade::handle<Standard_Transient> second; ///< what it lies on, or null

private:
    std::array<TopoDS_Face, 2> truncatedPlane;

public:
    std::uint64_t values[2] = {}; ///< the host's own, copied as they are
    std::string text;             ///< the host's own

private:
    EdgeType edgeType = EdgeOther;

public:
    TopoDS_Edge oriTopoEdge; ///< what GetOriTopoEdge returns
};
