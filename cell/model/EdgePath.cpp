#include <algorithm>
#include <cell/model/EdgeChain.h>
#include <cell/model/ToolPathReader.h>
#include <cell/model/TorchDirection.h>
#include <cmath>

namespace cell {

namespace {

/// Round a corner the tool turns over this length before and after it, mm.
constexpr double CornerLength = 20;
/// Edges that meet at a smaller angle (rad) than this have no corner.
constexpr double NoCorner = 0.05;

bool HasCorner(const std::vector<gp_XYZ>& tools) {
    for (std::size_t i = 1; i < tools.size(); ++i) {
        if (tools[i].Crossed(tools[i - 1]).Modulus() > NoCorner) {
            return true;
        }
    }
    return false;
}

/// Each direction becomes the mean over the length around it, so that a corner is turned evenly.
std::vector<gp_XYZ> Rounded(const std::vector<EdgeChain::Place>& places, const std::vector<gp_XYZ>& tools) {
    std::vector<gp_XYZ> rounded;
    std::size_t first = 0;
    for (const EdgeChain::Place& place : places) {
        gp_XYZ sum;
        while (place.along - places[first].along > CornerLength) {
            ++first;
        }
        for (std::size_t j = first; j < places.size(); ++j) {
            const double apart = std::abs(places[j].along - place.along);
            if (apart > CornerLength) {
                break;
            }
            sum += tools[j] * (1 - apart / CornerLength);
        }
        rounded.push_back(sum.Normalized());
    }
    return rounded;
}

} // namespace

std::vector<ToolPose> PosesAlongEdges(const TopoDS_Shape& shape, const JsonNode& item,
                                      const JsonNode& described) {
    const EdgeChain chain(shape, item, described);
    const JsonNode node = item.At("spacing_mm");
    const double spacing = node.Length();
    if (chain.Length() / spacing > MostPoses) {
        node.Refuse("a spacing that gives at most 1000000 poses");
    }
    if (spacing > chain.Length()) {
        node.Refuse("a spacing of at most the seam's length (" + std::to_string(chain.Length()) + " mm)");
    }
    const std::vector<EdgeChain::Place> places = chain.Places(spacing);
    TorchDirection torch(shape, chain, item);
    std::vector<gp_XYZ> tools;
    tools.reserve(places.size());
    for (const EdgeChain::Place& place : places) {
        tools.push_back(torch.At(place));
    }
    if (item.Find("edges") && HasCorner(tools)) {
        tools = Rounded(places, tools);
    }
    std::vector<ToolPose> poses;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const gp_Pnt& p = places[i].point;
        poses.push_back({p.X(), p.Y(), p.Z(), tools[i].X(), tools[i].Y(), tools[i].Z()});
    }
    if (chain.Closed()) {
        poses.back() = poses.front();
    }
    return poses;
}

} // namespace cell
