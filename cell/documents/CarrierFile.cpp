#include <cell/documents/ArmFile.h>
#include <cell/documents/CarrierFile.h>

namespace cell {

namespace {

/// A body in space has three directions of translation and three of rotation.
constexpr std::size_t MostJoints = 6;

CarrierJoint ReadJoint(const JsonNode& node) {
    const JsonNode motion = node.At("motion");
    const bool linear = motion.Text() == "linear";
    if (!linear && motion.Text() != "rotary") {
        motion.Refuse("rotary or linear");
    }
    const std::string unit = linear ? "mm" : "deg";
    const JsonNode low = node.At("min_" + unit);
    const JsonNode high = node.At("max_" + unit);
    if (low.Number() > high.Number()) {
        low.Refuse("at most max_" + unit + ", which is " + high.Value().asString());
    }
    return {node.At("origin_mm").Position(), ReadDirection(node.At("axis")),
            linear ? JointLinear : JointRotary, low.Number(), high.Number()};
}

} // namespace

CarrierDescription ReadCarrier(const JsonNode& node, const std::string& kind) {
    if (node.At("kind").Text() != kind) {
        node.At("kind").Refuse("\"" + kind + "\"");
    }
    CarrierDescription carrier{node.At("name").Text(), {}, ReadFlange(node.At("flange"))};
    const JsonNode list = node.At("joints");
    const std::vector<JsonNode> joints = list.Items("joints");
    const std::size_t fewest = kind == "pedestal" ? 1 : 0;
    if (joints.size() < fewest || joints.size() > MostJoints) {
        list.Refuse(std::to_string(joints.size()) + " joints",
                    std::to_string(fewest) + " to " + std::to_string(MostJoints) + " for a " + kind);
    }
    for (const JsonNode& joint : joints) {
        carrier.joints.push_back(ReadJoint(joint));
    }
    return carrier;
}

} // namespace cell
