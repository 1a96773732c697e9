#include <cell/ArmFile.h>
#include <cmath>

namespace cell {

namespace {

/// Files round their directions to nine digits; anything beyond this is a mistake, not rounding.
constexpr double UnitTolerance = 1e-6;

constexpr std::size_t FewestJoints = 2;
constexpr std::size_t JointsOfArm = 6;
constexpr std::size_t JointsOfCoupledArm = 7;

ArmJoint ReadJoint(const JsonNode& node) {
    const ArmJoint joint{node.At("origin_mm").Position(), ReadDirection(node.At("axis")),
                         node.At("min_deg").Number(), node.At("max_deg").Number()};
    if (joint.minDeg > joint.maxDeg) {
        node.At("min_deg").Refuse("at most max_deg, which is " + node.At("max_deg").Value().asString());
    }
    return joint;
}

void RequireJointCount(const JsonNode& list, std::size_t count, bool coupled) {
    const std::string shown = std::to_string(count) + (count == 1 ? " joint" : " joints");
    if (count < FewestJoints) {
        list.Refuse(shown, "at least two for a mechanism, six for an arm");
    }
    if (count != (coupled ? JointsOfCoupledArm : JointsOfArm)) {
        list.Refuse(shown, coupled ? "7 for an arm with a coupled wrist" : "6 for an arm");
    }
}

} // namespace

Triple ReadDirection(const JsonNode& node) {
    const Triple direction = node.Triple();
    if (!(std::abs(Length(direction) - 1) <= UnitTolerance)) {
        node.Refuse("a direction of length 1 (within 1e-6)");
    }
    return Unit(direction);
}

Rigid ReadFlange(const JsonNode& node) {
    const Triple origin = node.At("origin_mm").Position();
    const Triple x = ReadDirection(node.At("x_axis"));
    const Triple z = ReadDirection(node.At("z_axis"));
    if (!(std::abs(Dot(x, z)) <= UnitTolerance)) {
        node.At("x_axis").Refuse("a direction perpendicular to z_axis (within 1e-6)");
    }
    return FrameOfFlange(origin, x, z);
}

ArmDescription ReadArm(const JsonNode& node) {
    const JsonNode kind = node.At("kind");
    if (kind.Text() != "robot") {
        kind.Refuse("\"robot\" for an arm");
    }
    ArmDescription arm{node.At("name").Text(),        node.At("arm_structure").Whole(0, 2),
                       node.At("coupled").Flag(),     {},
                       ReadFlange(node.At("flange")), node};
    const JsonNode list = node.At("joints");
    const std::vector<JsonNode> joints = list.Items("joints");
    RequireJointCount(list, joints.size(), arm.coupled);
    for (const JsonNode& joint : joints) {
        arm.joints.push_back(ReadJoint(joint));
    }
    return arm;
}

} // namespace cell
