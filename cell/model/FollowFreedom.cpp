#include <algorithm>
#include <cell/model/FollowFreedom.h>

namespace cell {

namespace {

using planning::AxisFreedom;
using planning::Tolerance;
using Kind = AxisFreedom::Kind;

/// Two numbers, the lower one first.
std::pair<double, double> ReadRange(const JsonNode& node) {
    const std::vector<double> n = node.Numbers();
    if (n.size() != 2 || !(n[0] <= n[1])) {
        node.Refuse("two numbers, the lower one first");
    }
    return {n[0], n[1]};
}

/// A number leaves nothing free; of a range, what is nominal stays so where it lies within.
void ReadTolerance(const JsonNode& item, const char* key, double unit, Tolerance& tolerance) {
    const auto node = item.Find(key);
    if (!node) {
        return;
    }
    const auto [low, high] =
        node->Value().isArray() ? ReadRange(*node) : std::pair(node->Number(), node->Number());
    const double nominal = std::clamp(tolerance.nominal / unit, low, high);
    tolerance.nominal = nominal * unit;
    tolerance.below = (nominal - low) * unit;
    tolerance.above = (high - nominal) * unit;
}

AxisFreedom ReadAxis(const JsonNode& node, const LinkRod& axis) {
    constexpr const char* Expected =
        R"(a number, "free", "downhand", {"free": [low, high]} or {"linear": [from, to]})";
    const double unit = FileUnit(axis);
    AxisFreedom freedom;
    if (node.Value().isString()) {
        const std::string word = node.Text();
        if (word != "free" && word != "downhand") {
            node.Refuse(Expected);
        }
        freedom.kind = word == "free" ? Kind::Free : Kind::Downhand;
        return freedom;
    }
    if (!node.Value().isObject()) {
        freedom.from = node.Number() * unit;
        return freedom;
    }
    node.OnlyKeys({"free", "linear"});
    const auto range = node.Find("free");
    const auto linear = node.Find("linear");
    if (range.has_value() == linear.has_value()) {
        node.Refuse(Expected);
    }
    freedom.kind = range ? Kind::Free : Kind::Linear;
    if (range) {
        const auto [low, high] = ReadRange(*range);
        freedom.low = low * unit;
        freedom.high = high * unit;
        return freedom;
    }
    const std::vector<double> n = linear->Numbers();
    if (n.size() != 2) {
        linear->Refuse("two numbers");
    }
    freedom.from = n[0] * unit;
    freedom.to = n[1] * unit;
    return freedom;
}

std::vector<AxisFreedom> Fixed(const std::vector<double>& values) {
    std::vector<AxisFreedom> fixed(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        fixed[i].from = values[i];
    }
    return fixed;
}

void ReadAxes(const JsonNode& list, const std::vector<const LinkRod*>& axes, std::vector<AxisFreedom>& out) {
    const auto items = list.Items("one entry an axis");
    if (items.size() != axes.size()) {
        list.Refuse(std::to_string(items.size()) + " entries",
                    std::to_string(axes.size()) + ", one for each axis");
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        out[i] = ReadAxis(items[i], *axes[i]);
    }
}

} // namespace

planning::SeamFreedom ReadFreedom(const JsonNode& item, const System& system,
                                  std::optional<std::size_t> bench, GrpState rest) {
    planning::SeamFreedom freedom;
    if (const auto tool = item.Find("tool")) {
        const std::string word = tool->Text();
        if (word != "welding" && word != "painting") {
            tool->Refuse("welding or painting");
        }
        freedom = word == "welding" ? planning::SeamFreedom::Welding() : planning::SeamFreedom::Painting();
    }
    ReadTolerance(item, "spin_deg", RadiansPerDegree, freedom.spin);
    ReadTolerance(item, "lead_deg", RadiansPerDegree, freedom.lead);
    ReadTolerance(item, "work_deg", RadiansPerDegree, freedom.work);
    ReadTolerance(item, "stick_out_mm", 1, freedom.stickOut);
    if (const auto downhand = item.Find("downhand_deg")) {
        freedom.downhand = downhand->Positive() * RadiansPerDegree;
    }
    if (system.pedestal != nullptr) {
        freedom.carrier = Fixed(rest.GetValues(Pedestal));
        if (const auto list = item.Find("pedestal")) {
            ReadAxes(*list, system.PedestalAxes(), freedom.carrier);
        }
    }
    if (bench) {
        freedom.holder = Fixed(rest.GetValues(static_cast<EntityName>(Bench + *bench)));
    }
    if (const auto list = item.Find("benches")) {
        const auto benches = list->Items("one list a bench");
        if (benches.size() != system.benches.size()) {
            list->Refuse(std::to_string(benches.size()) + " lists",
                         std::to_string(system.benches.size()) + ", one for each bench of the system");
        }
        for (std::size_t i = 0; i < benches.size(); ++i) {
            if (bench != i) {
                benches[i].Refuse("freedom of " + system.benches[i]->GetName(),
                                  "freedom of the bench that carries the workpiece");
            }
            ReadAxes(benches[i], AxesOf(*system.benches[i]), freedom.holder);
        }
    }
    return freedom;
}

} // namespace cell
