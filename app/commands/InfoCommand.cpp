#include <app/commands/Commands.h>
#include <app/commands/InfoJson.h>
#include <cell/Cell.h>
#include <cell/model/Systems.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <host/tools/gpHandle.h>
#include <mechanism/ToolEntity.h>
#include <ostream>

namespace cell {

namespace {

constexpr int ShownDecimals = 9;

std::string Numbers(const gp_XYZ& xyz) { return Spaced({xyz.X(), xyz.Y(), xyz.Z()}, ShownDecimals); }

std::string Pose(const LocEuler& pose) {
    return Numbers(pose.location.XYZ()) + " mm, " + Numbers(pose.euler.XYZ() / RadiansPerDegree) + " deg";
}

void PrintAxes(const GenericEntity& entity, std::ostream& out) {
    if (entity.GetLinkSize() == 0) {
        return;
    }
    out << "  axes (limits in degrees or mm, direction and origin at zero in the world):\n";
    for (int i = 0; i < entity.GetLinkSize(); ++i) {
        const LinkRod& link = *entity.GetLink(static_cast<std::size_t>(i));
        const auto& [low, high] = link.GetLimit();
        const bool slides = Slides(link);
        const gp_Ax1 axis = link.axis.Transformed(link.worldTrsf);
        out << "    " << i + 1 << ": " << (slides ? Rounded(low, ShownDecimals) : Degrees(low)) << " to "
            << (slides ? Rounded(high, ShownDecimals) + " mm" : Degrees(high)) << ", direction "
            << Numbers(axis.Direction().XYZ()) << ", origin " << Numbers(axis.Location().XYZ()) << '\n';
    }
}

void PrintTable(const RobotEntity& robot, std::ostream& out) {
    out << "  Denavit-Hartenberg rows (a mm, alpha deg, d mm, theta deg):\n";
    std::size_t number = 1;
    for (const auto& [a, alpha, d, theta] : robot.GetArmDH()) {
        out << "    " << number++ << ": "
            << Spaced({a, alpha / RadiansPerDegree, d, theta / RadiansPerDegree}, ShownDecimals) << '\n';
    }
}

void PrintTools(const RobotEntity& robot, std::ostream& out) {
    // The current one may lie past the end of the list; asking for it makes it an identity in the list.
    robot.GetCurrentTool();
    out << "  tools on the flange (place and angles of the tool centre):\n";
    int index = 0;
    for (const gp_Trsf& tool : robot.GetTools()) {
        out << "    " << index << ": " << Pose(gpHandle::TrsfToEuler(tool))
            << (index == robot.GetToolIndex() ? ", current" : "") << '\n';
        ++index;
    }
}

void PrintRobot(RobotEntity& robot, std::ostream& out) {
    robot.Reset();
    out << "  structure " << robot.GetArmStructureCode() << (robot.IsCouplingRobot() ? ", coupled wrist" : "")
        << ", stands " << (robot.IsRobotUp() ? "up" : "upside down") << '\n';
    PrintAxes(robot, out);
    PrintTable(robot, out);
    PrintTools(robot, out);
    out << "  TCP at zero: " << Pose(robot.GetCurrentTCP()) << '\n';
}

void PrintTool(ToolEntity& tool, std::ostream& out) {
    const bool paints = tool.GetToolWorkType() == ToolEntity::WorkTypePainting;
    out << "  " << (paints ? "paints" : "welds")
        << ", tool centre on the flange: " << Pose(gpHandle::TrsfToEuler(tool.GetToolTrsf())) << '\n';
    if (!tool.GetPaintedMdl().IsNull()) {
        const Json::Value& sizes = tool.GetParameters();
        out << "  spray cone (mm): radius " << Shortest(sizes["up_radius"].asDouble()) << " to "
            << Shortest(sizes["down_radius"].asDouble()) << " over "
            << Shortest(sizes["paint_length"].asDouble()) << '\n';
    }
}

void PrintMechanism(const Mechanism& mechanism, std::ostream& out) {
    GenericEntityConfig& entity = *mechanism.entity;
    out << mechanism.kind << " \"" << entity.GetName() << "\", hash " << entity.GetHashIndex() << '\n';
    out << "  placement: " << Numbers(entity.GetRootMdlTrsf().TranslationPart()) << " mm";
    if (const GenericEntity* carrier = entity.GetMountingEntity()) {
        out << ", mounted on \"" << carrier->GetName() << "\" at place " << entity.GetInstallIndex();
    }
    out << '\n';
    if (auto* robot = dynamic_cast<RobotEntity*>(&entity)) {
        PrintRobot(*robot, out);
    } else {
        PrintAxes(entity, out);
    }
    if (auto* tool = dynamic_cast<ToolEntity*>(&entity)) {
        PrintTool(*tool, out);
    }
}

void PrintSystem(const System& system, std::ostream& out) {
    out << "system " << system.Hash() << ": robot \"" << system.robot->GetName() << "\" ("
        << system.robot->GetDOF(0) << ')';
    if (system.pedestal != nullptr) {
        out << ", pedestal \"" << system.pedestal->GetName() << "\" (" << system.PedestalAxes().size() << ')';
    }
    for (const BenchEntity* bench : system.benches) {
        out << ", bench \"" << bench->GetName() << "\" (" << bench->GetLinkSize() << ')';
    }
    out << ", " << GrpConfig::GetContextDof(system.Hash()) << " values\n";
}

void PrintMotions(const Cell& cell, std::ostream& out) {
    for (const System& system : cell.Systems()) {
        PrintSystem(system, out);
    }
    for (const KeyState& key : cell.KeyStates()) {
        out << "key state \"" << key.name << "\": TCP " << Pose(key.state.GetLocEuler(0)) << '\n';
    }
    for (const Motion& motion : cell.Motions()) {
        out << "motion \"" << motion.name << "\" (" << motion.kind << "):";
        for (const KeyState& key : motion.keys) {
            out << ' ' << key.name;
        }
        for (const std::size_t part : motion.parts) {
            out << ' ' << cell.Motions()[part].name;
        }
        out << '\n';
    }
    for (const ToolPath& path : cell.ToolPaths()) {
        out << "tool path \"" << path.name << "\" on \"" << path.workpiece->GetName()
            << "\": " << path.poses.size() << " poses\n";
    }
}

} // namespace

void Info(const InfoRequest& request, std::ostream& out) {
    const Cell cell = Cell::Load(request.file);
    if (request.json) {
        out << JsonText(CellToJson(cell));
        return;
    }
    out << "cell \"" << cell.Name() << "\"\n";
    for (const Mechanism& mechanism : cell.Mechanisms()) {
        PrintMechanism(mechanism, out);
    }
    PrintMotions(cell, out);
}

} // namespace cell
