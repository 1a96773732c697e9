#include <cell/documents/ArmFile.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <cmath>
#include <gp_Quaternion.hxx>
#include <gp_Vec.hxx>

namespace cell {

namespace {

/// Files give directions with nine digits; a larger deviation from length 1 is an error, not rounding.
constexpr double UnitTolerance = 1e-6;

constexpr int ShownDecimals = 9;

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

gp_Vec Column(const Rigid& frame, int column) {
    return {frame.r[column], frame.r[3 + column], frame.r[6 + column]};
}

std::string Shown(const gp_Vec& v) {
    std::string text;
    for (int i = 1; i <= 3; ++i) {
        text += (i == 1 ? "[" : ",") + Rounded(v.Coord(i), ShownDecimals);
    }
    return text + "]";
}

/// Tools hang along the flange's Z, and the reach is computed as if they did along the last axis.
void RequireOutwardFlange(const JsonNode& node, const Rigid& flange, const Vec& axis) {
    const gp_Vec z = Column(flange, 2);
    const gp_Vec outward(axis[0], axis[1], axis[2]);
    if ((z - outward).Magnitude() <= UnitTolerance) {
        return;
    }
    const gp_Quaternion turn(z, outward, Column(flange, 1)); // about X where they are opposite
    gp_Vec about;
    double angle = 0;
    turn.GetVectorAndAngle(about, angle);
    node.At("z_axis").Refuse(Shown(outward) + ", the last joint's axis: turn the flange by " +
                             Rounded(angle / RadiansPerDegree, 3) + " degrees about " + Shown(about) +
                             ", which makes x_axis " + Shown(turn.Multiply(Column(flange, 0))));
}

} // namespace

Vec ReadDirection(const JsonNode& node) {
    const Vec direction = node.Triple();
    if (!(std::abs(Length(direction) - 1) <= UnitTolerance)) {
        node.Refuse("a direction of length 1 (within 1e-6)");
    }
    return Unit(direction);
}

Rigid ReadFlange(const JsonNode& node) {
    const Vec origin = node.At("origin_mm").Position();
    const Vec x = ReadDirection(node.At("x_axis"));
    const Vec z = ReadDirection(node.At("z_axis"));
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
    RequireOutwardFlange(node.At("flange"), arm.flange, arm.joints.back().axis);
    return arm;
}

} // namespace cell
