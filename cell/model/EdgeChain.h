#pragma once

#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS_Edge.hxx>
#include <cell/ToolPath.h>
#include <cell/documents/JsonNode.h>
#include <gp_Vec.hxx>
#include <optional>

namespace cell {

/// Edges of a shape one after the other, each from a length along it to another.
class EdgeChain {
public:
    /// Takes what an item says under "edge" or "edges", "reversed", "start_mm" and "trim_mm".
    /// @param names the workpiece's item, whose "edges" may give edges names. @throws InputError.
    EdgeChain(const TopoDS_Shape& shape, const JsonNode& item, const JsonNode& names);

    double Length() const;
    bool Closed() const { return closed; }

    /// A place of the chain.
    struct Place {
        TopoDS_Edge edge;
        double parameter;
        gp_Pnt point;
        gp_Vec tangent; ///< unit, in the sense of the chain
        double along;   ///< from the chain's start, mm
    };
    /// Places at most about `spacing` apart; ends of edges are among them, a closed chain ends where it
    /// starts.
    std::vector<Place> Places(double spacing) const;
    /// Faces at an edge.
    const TopTools_ListOfShape& FacesAt(const TopoDS_Edge& edge) const { return edges.FindFromKey(edge); }

private:
    struct Part {
        TopoDS_Edge edge;
        double from, to; ///< lengths from the edge's first parameter; `to` below `from` where it is run back
    };
    int NumberOf(const JsonNode& node, const JsonNode& names) const;
    int Nearest(const JsonNode& node) const;
    void Join(const JsonNode& list, const std::vector<JsonNode>& items, const std::vector<int>& numbers);
    void Reverse();
    void StartAt(double along);
    void Trim(double front);

    TopTools_IndexedDataMapOfShapeListOfShape edges;
    std::vector<Part> parts;
    bool closed = false;
};

} // namespace cell
