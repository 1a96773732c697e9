#include "DhTable.h"

#include "Checked.h"
#include "Failure.h"

#include <cmath>
#include <host/tools/ArmFacts.h>
#include <host/tools/DataHandle.h>
#include <host/tools/gpHandle.h>
#include <mechanism/RobotEntity.h>
#include <numbers>

using namespace mechanism_detail;

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double HalfPi = Pi / 2;

using Row = RobotEntity::DhRow;

// The two arm structures with table rows of their own; all other arms are ordinary.
constexpr int ParallelArm = 1;  // three parallel axes, then two wrist offsets
constexpr int ObliqueWrist = 2; // seven links, wrist axes at an angle to each other
constexpr std::size_t ObliqueWristLinks = 7;

constexpr int LastRow = 5;

// State of the pass along the zero pose after a link was composed.
struct Step {
    gp_XYZ before; // origin of the previous link
    gp_XYZ at;     // origin of this link
    double twist;  // between the joint axis and the axis of the same name in the parent

    double Distance() const { return (at - before).Modulus(); }
};

// Rows of ordinary arms and of both other structures, one link at a time. Some links also complete earlier
// rows, as an offset along an axis shows only at a later joint.
void AppendRow(std::vector<Row>& rows, int k, int structure, const Step& step) {
    const bool parallel = structure == ParallelArm;
    const bool oblique = structure == ObliqueWrist;
    const auto& [before, at, twist] = step;
    switch (k) {
    case 0:
        rows.push_back(parallel ? Row{0, HalfPi, 0, HalfPi} : Row{at.X(), -HalfPi, at.Y(), -HalfPi});
        rows[0][DhD] = at.Z();
        break;
    case 1:
        rows.push_back({at.Z() - before.Z(), 0, 0, 0});
        break;
    case 2:
        rows.push_back(parallel ? Row{at.Z() - before.Z(), 0, 0, -HalfPi}
                                : Row{at.Z() - before.Z(), -HalfPi, 0, oblique ? -HalfPi : 0});
        break;
    case 3:
        rows.push_back(parallel  ? Row{0, -HalfPi, 0, 0}
                       : oblique ? Row{0, twist, step.Distance(), 0}
                                 : Row{0, HalfPi, 0, 0});
        rows[3][DhD] = parallel ? std::abs(at.Y()) : (oblique ? before.X() : at.X()) - rows[1][DhA];
        break;
    case 4:
        if (parallel) {
            rows[4][DhD] = at.Z() - rows[0][DhD] - rows[2][DhA] - rows[3][DhA];
            rows.push_back({0, HalfPi, std::abs(at.Y()) - rows[3][DhD], 0});
        } else {
            rows[1][DhD] = at.Y();
            rows.push_back(oblique ? Row{0, -twist, step.Distance(), 0}
                                   : Row{0, -HalfPi, at.X() - before.X(), Pi});
        }
        break;
    default:
        rows.push_back({0, twist, at.X() - before.X(), -HalfPi});
    }
}

} // namespace

gp_Trsf mechanism_detail::DhToTrsf(const Row& row) { return ArmFacts::FrameOfRow(row).ToTrsf(); }

std::vector<Row> RobotEntity::GetArmDH1989(GenericEntity* entity) {
    const auto* arm = dynamic_cast<GenericEntityConfig*>(entity);
    const LinkRod* root = arm != nullptr ? arm->GetRootLink(0) : nullptr;
    if (root == nullptr) {
        return {};
    }
    int structure = arm->GetArmStructureCode();
    if (structure == 0 && arm->GetLinkSize() == ObliqueWristLinks) {
        structure = ObliqueWrist;
    }
    gp_Trsf zeroPose = root->GetCenterTrsf();
    std::vector<Row> rows{Row{}};
    int k = 0;
    for (LinkRod* link = root->GetSubLink(0); link != nullptr && link->IsValid() && k <= LastRow;
         link = link->GetSubLink(0), ++k) {
        const gp_XYZ before = zeroPose.TranslationPart();
        zeroPose.Multiply(link->GetCenterTrsf());
        const double twist = link->GetCenterAxis().Angle(LinkRod::GetAxis(link->jointType));
        AppendRow(rows, k, structure, {before, zeroPose.TranslationPart(), twist});
    }
    return rows;
}

void RobotEntity::Normalized() {
    if (GetLinkSize() < GetRobotDOF()) {
        return;
    }
    // Each record carries the link's own value; the robot's current value follows when the robot moves.
    const std::vector<double> values = currentValues;
    for (std::size_t i = 0; i < links.size(); ++i) {
        LinkRod* link = GetLink(i);
        if (link == nullptr) {
            Log(spdlog::level::err, family::RobotEntity, __LINE__, "RobotEntity::Normalized",
                "机器人关节数量错误");
            return;
        }
        Json::Value json = LinkToJson(link);
        json["joint_type"] = static_cast<int>(JointZ);
        json["center_trsf"] = DataHandle::TrsfToJsonSix(DhToTrsf(At(armDH, i)));
        UpdateLinkRodPara(json, false);
    }
    currentValues = values;
}

gp_Trsf RobotEntity::GetRobotBaseDHTrsf() const {
    return GetArmStructureCode() == ParallelArm ? gpHandle::AxisRotateToTrsf(gp_Vec(0, 0, 1), Pi) : gp_Trsf();
}

gp_Trsf RobotEntity::GetRobotAssembleTrsf() const { return GetParentAssembleTrsf() * GetRobotBaseDHTrsf(); }

gp_Trsf RobotEntity::GetDefaultTCPTrsf() const { return GetRootMdlTrsf() * endCenterTrsf; }
