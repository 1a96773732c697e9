#include <BRepAdaptor_Curve.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cell/model/EdgeChain.h>
#include <cell/model/ToolPathReader.h>
#include <cmath>

namespace cell {

namespace {

constexpr int MostEdges = 1000000;
/// Ends of edges nearer to each other than this (mm) count as joined.
constexpr double Joined = 1e-3;
/// Parts of an edge shorter than this (mm) are ignored.
constexpr double Nothing = 1e-6;

double LengthOf(const TopoDS_Edge& edge) { return GCPnts_AbscissaPoint::Length(BRepAdaptor_Curve(edge)); }

double ParameterAt(const BRepAdaptor_Curve& curve, double along) {
    return GCPnts_AbscissaPoint(curve, along, curve.FirstParameter()).Parameter();
}

gp_Pnt PointAt(const TopoDS_Edge& edge, double along) {
    const BRepAdaptor_Curve curve(edge);
    return curve.Value(ParameterAt(curve, along));
}

} // namespace

EdgeChain::EdgeChain(const TopoDS_Shape& shape, const JsonNode& item, const JsonNode& names) {
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, edges);
    const auto list = item.Find("edges");
    const JsonNode given = list ? *list : item.At("edge");
    const std::vector<JsonNode> items = list ? list->Items("edges") : std::vector<JsonNode>{given};
    std::vector<int> numbers;
    numbers.reserve(items.size());
    for (const JsonNode& node : items) {
        numbers.push_back(NumberOf(node, names));
    }
    if (numbers.empty()) {
        given.Refuse("at least one edge");
    }
    Join(given, items, numbers);
    if (const auto reversed = item.Find("reversed"); reversed && reversed->Flag()) {
        Reverse();
    }
    if (const auto start = item.Find("start_mm")) {
        if (!closed || !(start->Number() >= 0 && start->Number() < Length())) {
            start->Refuse("a length from 0 to that of a closed chain (" + std::to_string(Length()) + " mm)");
        }
        StartAt(start->Number());
    }
    if (const auto trim = item.Find("trim_mm")) {
        const std::vector<double> ends = trim->Numbers();
        if (ends.size() != 2 || !(ends[0] >= 0 && ends[1] >= 0 && ends[0] + ends[1] < Length())) {
            trim->Refuse("two lengths, together less than the seam's " + std::to_string(Length()) + " mm");
        }
        closed = closed && ends[0] == 0 && ends[1] == 0;
        Trim(ends[0]);
        Reverse();
        Trim(ends[1]);
        Reverse();
    }
}

int EdgeChain::NumberOf(const JsonNode& node, const JsonNode& names) const {
    if (node.Value().isObject()) {
        return Nearest(node);
    }
    int number = 0;
    if (node.Value().isInt()) {
        number = node.Value().asInt();
    } else {
        const auto known = names.Find("edges");
        const auto named = known && node.Value().isString() ? known->Find(node.Text()) : std::nullopt;
        if (!named) {
            node.Refuse("the number of an edge, or a name under edges of " + names.Path());
        }
        number = named->Whole(1, MostEdges);
    }
    if (number < 1 || number > edges.Extent()) {
        node.Refuse("the number of an edge, from 1 to " + std::to_string(edges.Extent()));
    }
    if (BRep_Tool::Degenerated(TopoDS::Edge(edges.FindKey(number)))) {
        node.Refuse("an edge that has a length");
    }
    return number;
}

int EdgeChain::Nearest(const JsonNode& node) const {
    node.OnlyKeys({"near_mm"});
    const auto p = node.At("near_mm").Position();
    const TopoDS_Shape vertex = BRepBuilderAPI_MakeVertex(gp_Pnt(p[0], p[1], p[2])).Shape();
    int nearest = 0;
    double least = RealLast();
    for (int i = 1; i <= edges.Extent(); ++i) {
        const TopoDS_Edge edge = TopoDS::Edge(edges.FindKey(i));
        if (BRep_Tool::Degenerated(edge)) {
            continue;
        }
        const BRepExtrema_DistShapeShape distance(edge, vertex);
        if (distance.IsDone() && distance.Value() < least) {
            least = distance.Value();
            nearest = i;
        }
    }
    return nearest;
}

/// Each edge begins where the one before it ends; the first one is turned to meet the second.
void EdgeChain::Join(const JsonNode& list, const std::vector<JsonNode>& items,
                     const std::vector<int>& numbers) {
    for (const int number : numbers) {
        const TopoDS_Edge edge = TopoDS::Edge(edges.FindKey(number));
        parts.push_back({edge, 0, LengthOf(edge)});
    }
    const auto begin = [](const Part& part) { return PointAt(part.edge, part.from); };
    const auto end = [](const Part& part) { return PointAt(part.edge, part.to); };
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        const auto joins = [&](const gp_Pnt& point) {
            return point.Distance(begin(parts[i + 1])) < Joined || point.Distance(end(parts[i + 1])) < Joined;
        };
        if (i == 0 && !joins(end(parts[0]))) {
            std::swap(parts[0].from, parts[0].to);
        }
        if (!joins(end(parts[i]))) {
            items[i + 1].Refuse("an edge that begins or ends where the one before it ends");
        }
        if (end(parts[i]).Distance(begin(parts[i + 1])) >= Joined) {
            std::swap(parts[i + 1].from, parts[i + 1].to);
        }
    }
    if (!(Length() > Nothing)) {
        list.Refuse("edges that have a length");
    }
    closed = begin(parts.front()).Distance(end(parts.back())) < Joined;
}

double EdgeChain::Length() const {
    double length = 0;
    for (const Part& part : parts) {
        length += std::abs(part.to - part.from);
    }
    return length;
}

void EdgeChain::Reverse() {
    std::reverse(parts.begin(), parts.end());
    for (Part& part : parts) {
        std::swap(part.from, part.to);
    }
}

void EdgeChain::Trim(double front) {
    while (!parts.empty() && front > 0) {
        Part& part = parts.front();
        const double length = std::abs(part.to - part.from);
        if (front < length - Nothing) {
            part.from += part.to > part.from ? front : -front;
            return;
        }
        front -= length;
        parts.erase(parts.begin());
    }
}

void EdgeChain::StartAt(double along) {
    const std::vector<Part> whole = parts;
    const double rest = Length() - along;
    Trim(along);
    std::vector<Part> after = parts;
    parts = whole;
    Reverse();
    Trim(rest);
    Reverse();
    after.insert(after.end(), parts.begin(), parts.end());
    parts = along > 0 ? after : whole;
}

std::vector<EdgeChain::Place> EdgeChain::Places(double spacing) const {
    std::vector<Place> places;
    double before = 0;
    for (const Part& part : parts) {
        const BRepAdaptor_Curve curve(part.edge);
        const double length = std::abs(part.to - part.from);
        const auto count = static_cast<int>(std::clamp(std::round(length / spacing), 1.0, MostPoses));
        for (int k = places.empty() ? 0 : 1; k <= count; ++k) {
            const double t = static_cast<double>(k) / count;
            Place place{part.edge, ParameterAt(curve, part.from + t * (part.to - part.from)), {}, {}, 0};
            curve.D1(place.parameter, place.point, place.tangent);
            place.tangent.Normalize();
            place.tangent *= part.to > part.from ? 1 : -1;
            place.along = before + t * length;
            places.push_back(place);
        }
        before += length;
    }
    if (closed) {
        places.back().point = places.front().point;
    }
    return places;
}

} // namespace cell
