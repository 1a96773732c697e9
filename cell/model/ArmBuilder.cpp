#include <cell/bodies/ArmShapes.h>
#include <cell/bodies/Solids.h>
#include <cell/model/ArmBuilder.h>
#include <cell/model/Systems.h>
#include <cell/text/Text.h>
#include <host/tools/ArmFacts.h>
#include <host/tools/DataHandle.h>

namespace cell {

namespace {

/// Largest deviation of the robot's axes from the description's; rounding of its digits causes less.
constexpr double SameLine = 1e-4;      // mm
constexpr double SameDirection = 1e-7; // rad

constexpr int ShownDecimals = 6;

Json::Value LinkRecord(std::size_t number, const ArmJoint& joint, JointType type, const Rigid& centre) {
    Json::Value record(Json::objectValue);
    record["name"] = "Link" + std::to_string(number);
    record["joint_type"] = static_cast<int>(type);
    record["joint_value"] = 0;
    record["link_hash"] = Json::UInt64(number);
    record["parent_link_hash"] = Json::UInt64(number - 1);
    record["center_trsf"] = DataHandle::TrsfToJsonSix(centre.ToTrsf());
    record["axis_min"] = joint.minDeg;
    record["axis_max"] = joint.maxDeg;
    return record;
}

/// The table ends at the last link's frame, and what the arm reaches is computed from the table alone: the
/// frame goes along its own axis to where the flange is. Joint, bodies and flange stay where they are.
void MoveLastFrameToFlange(const ArmDescription& arm, GenericEntityConfig& structure) {
    const std::size_t last = arm.joints.size() - 1;
    const ArmJoint& joint = arm.joints[last];
    const ArmJoint& before = arm.joints[last - 1];
    const double along = Dot(Origin(arm.flange) - joint.origin, joint.axis);
    const auto [frame, type] = FrameOfJoint(joint.origin + along * joint.axis, joint.axis);
    structure.UpdateLinkRodPara(
        LinkRecord(last + 1, joint, type, Inverse(FrameOfJoint(before.origin, before.axis).frame) * frame),
        false);
}

void AddLinks(const ArmDescription& arm, GenericEntityConfig& structure) {
    const Bodies bodies = ShapeArm(arm);
    AddBase(bodies.base, structure);
    Rigid parent = ArmFacts::ChainBase(arm.structure);
    for (std::size_t i = 0; i < arm.joints.size(); ++i) {
        const auto [frame, type] = FrameOfJoint(arm.joints[i].origin, arm.joints[i].axis);
        LinkRod* link = structure.UpdateLinkRodPara(
            LinkRecord(i + 1, arm.joints[i], type, Inverse(parent) * frame), false);
        for (const Body& body : bodies.links[i]) {
            link->models.push_back(MakeModel(body, frame));
        }
        parent = frame;
    }
    structure.AddFlange(
        std::make_shared<Flange>(structure.GetEndLink(0), (Inverse(parent) * arm.flange).ToTrsf()));
    MoveLastFrameToFlange(arm, structure);
}

/// The table knows the axes of an arm only as far as its structure has them; any other arm would come out
/// bent.
void RequireSameAxes(const ArmDescription& arm, const RobotEntity& robot) {
    for (std::size_t i = 0; i < arm.joints.size(); ++i) {
        const Rigid& world = robot.GetLink(i)->GetWorld();
        const ArmJoint& joint = arm.joints[i];
        const Vec offset = Origin(world) - joint.origin;
        const double apart = Length(Cross(offset, joint.axis));
        const double turned = Length(Column(world, 2) - joint.axis);
        if (!(apart <= SameLine && turned <= SameDirection)) {
            const JsonNode node = arm.node.At("joints").Items("joints")[i];
            node.At(turned <= SameDirection ? "origin_mm" : "axis")
                .Refuse("joints that fit arm_structure, which is " + std::to_string(arm.structure) + " (" +
                        Rounded(apart, ShownDecimals) + " mm and " + Rounded(turned, ShownDecimals) +
                        " rad off)");
        }
    }
}

} // namespace

std::unique_ptr<RobotEntity> BuildArm(const ArmDescription& arm, const std::string& name,
                                      std::uint64_t hash) {
    GenericEntityConfig structure;
    structure.SetName(name);
    structure.SetHashIndex(hash);
    structure.SetArmStructureCode(arm.structure);
    structure.SetCouplingRobot(arm.coupled);
    AddLinks(arm, structure);
    FillCoupling(hash, static_cast<int>(arm.joints.size()), arm.coupled);
    auto robot = std::make_unique<RobotEntity>(&structure);
    RequireSameAxes(arm, *robot);
    robot->UpdateLinkModelNames();
    return robot;
}

std::uint64_t HashOfName(const std::string& name) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    }
    return hash != 0 ? hash : 1;
}

} // namespace cell
