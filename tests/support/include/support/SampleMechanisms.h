#pragma once

#include <BRepPrimAPI_MakeBox.hxx>
#include <gp_Ax2.hxx>
#include <gp_Ax3.hxx>
#include <host/tools/DataHandle.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

/// Sample mechanisms with independent forward kinematics: a product of exponentials over the joint axes at
/// zero, without links, tables or frames.
namespace sample {

struct Mechanism {
    std::vector<gp_Ax1> axes;      ///< joint axes at zero, in the mechanism's frame
    gp_Trsf flange;                ///< flange at zero, in the mechanism's frame
    std::vector<bool> linear = {}; ///< joints that slide; empty for none
    int armStructure = 0;
    bool coupled = false;

    /// Motion of the body behind joint `count` (all joints by default), in the mechanism's frame.
    gp_Trsf MotionAt(const std::vector<double>& values, std::size_t count = SIZE_MAX) const {
        gp_Trsf motion;
        for (std::size_t i = 0; i < std::min(count, axes.size()); ++i) {
            gp_Trsf joint;
            if (Slides(i)) {
                joint.SetTranslation(gp_Vec(axes[i].Direction()) * values[i]);
            } else {
                joint.SetRotation(axes[i], values[i]);
            }
            motion.Multiply(joint);
        }
        return motion;
    }
    bool Slides(std::size_t joint) const { return !linear.empty() && linear[joint]; }
    gp_Trsf FlangeAt(const std::vector<double>& values) const { return MotionAt(values) * flange; }
};

inline gp_Trsf Frame(const gp_Pnt& origin, const gp_Dir& z, const gp_Dir& x) {
    gp_Trsf frame;
    frame.SetTransformation(gp_Ax3(origin, z, x), gp_Ax3());
    return frame;
}

inline Mechanism SixAxisArm() {
    const gp_Dir x(1, 0, 0);
    const gp_Dir y(0, 1, 0);
    return {.axes = {gp_Ax1({0, 0, 0}, gp_Dir(0, 0, 1)), gp_Ax1({150, 40, 500}, y),
                     gp_Ax1({150, 40, 1100}, y), gp_Ax1({150, 40, 1230}, x), gp_Ax1({860, 40, 1230}, y),
                     gp_Ax1({960, 40, 1230}, x)},
            .flange = Frame({985, 40, 1230}, x, gp_Dir(0, 0, -1))};
}

/// Three parallel axes and two wrist offsets: arm structure 1.
inline Mechanism ParallelArm() {
    const gp_Dir y(0, 1, 0);
    return {.axes = {gp_Ax1({0, 0, 0}, gp_Dir(0, 0, 1)), gp_Ax1({0, 0, 160}, y), gp_Ax1({0, 0, 590}, y),
                     gp_Ax1({0, 130, 980}, y), gp_Ax1({0, 130, 1090}, gp_Dir(0, 0, 1)),
                     gp_Ax1({0, 230, 1090}, y)},
            .flange = Frame({0, 230, 1090}, y, gp_Dir(1, 0, 0)),
            .armStructure = 1};
}

/// Seven links whose wrist axes stand at 35 degrees to each other.
inline Mechanism CoupledArm() {
    constexpr double tilt = 35.0 * std::numbers::pi / 180.0;
    const gp_Dir x(1, 0, 0);
    const gp_Dir y(0, 1, 0);
    const gp_Dir down(std::cos(tilt), 0, -std::sin(tilt));
    const gp_Dir up(std::cos(tilt), 0, std::sin(tilt));
    const gp_Pnt fifth(1400, 0, 1700);
    const gp_Pnt fourth = fifth.Translated(gp_Vec(down) * -80);
    const gp_Pnt sixth = fifth.Translated(gp_Vec(up) * 80);
    const gp_Pnt seventh = sixth.Translated(gp_Vec(x) * 90);
    return {.axes = {gp_Ax1({0, 0, 0}, gp_Dir(0, 0, 1)), gp_Ax1({250, 0, 600}, y), gp_Ax1({250, 0, 1500}, y),
                     gp_Ax1(fourth, x), gp_Ax1(fifth, down), gp_Ax1(sixth, up), gp_Ax1(seventh, x)},
            .flange = Frame(seventh, x, gp_Dir(0, 0, -1)),
            .coupled = true};
}

inline Mechanism TwoAxisRail() {
    return {.axes = {gp_Ax1({0, 0, 0}, gp_Dir(0, 1, 0)), gp_Ax1({0, 0, 300}, gp_Dir(1, 0, 0))},
            .flange = Frame({0, 100, 340}, gp_Dir(0, 0, 1), gp_Dir(1, 0, 0)),
            .linear = {true, true}};
}

/// A rail that slides, turns about a leaning column and slides along it.
inline Mechanism TurningRail() {
    const gp_Dir column(0.1, -0.2, 1);
    return {.axes = {gp_Ax1({10, 0, 0}, gp_Dir(1, 0.1, 0)), gp_Ax1({0, 200, 300}, column),
                     gp_Ax1({0, 0, 0}, column)},
            .flange = Frame({0, 900, 1340}, gp_Dir(0, 1, 1), gp_Dir(1, 0, 0)),
            .linear = {true, false, true}};
}

inline Mechanism Positioner() {
    return {.axes = {gp_Ax1({700, 0, 1000}, gp_Dir(1, 0, 0)), gp_Ax1({0, 0, 1000}, gp_Dir(0, 0, 1))},
            .flange = Frame({0, 0, 1120}, gp_Dir(0, 0, 1), gp_Dir(1, 0, 0))};
}

/// A block near the joint, so that every link has a body whose place can be compared.
inline opencascade::handle<ShapeEntity> Block(const gp_Trsf& inLink) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(gp_Pnt(-20, -30, 10), 60, 80, 100).Shape();
    return new ShapeEntity(box.Moved(TopLoc_Location(inLink)), Uuid::CreateUuid());
}

inline JointType ArmJoint(const gp_Dir& axis) {
    constexpr double exactly = 1e-12;
    for (const JointType type : {JointX, JointY, JointZ}) {
        if (axis.IsEqual(LinkRod::GetAxis(type), exactly)) {
            return type;
        }
    }
    return JointX;
}

/// The structure as a host would build it: arms get a frame at every joint, rails and positioners keep
/// identity frames and carry their axes.
inline std::unique_ptr<GenericEntityConfig> Build(const Mechanism& mechanism, std::uint64_t hash,
                                                  const std::string& name = "sample") {
    auto entity = std::make_unique<GenericEntityConfig>();
    entity->SetName(name);
    entity->SetHashIndex(hash);
    entity->SetArmStructureCode(mechanism.armStructure);
    entity->SetCouplingRobot(mechanism.coupled);
    entity->SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    const bool isArm = mechanism.axes.size() >= 6;
    gp_Trsf parent;
    if (mechanism.armStructure == 1) {
        parent.SetRotation(gp::OZ(), std::numbers::pi);
    }
    LinkRod* link = nullptr;
    for (std::size_t i = 0; i < mechanism.axes.size(); ++i) {
        const gp_Ax1& axis = mechanism.axes[i];
        gp_Trsf frame;
        Json::Value json;
        if (isArm) {
            const JointType type = ArmJoint(axis.Direction());
            const bool oblique = !axis.Direction().IsEqual(LinkRod::GetAxis(type), 1e-12);
            frame = oblique ? Frame(axis.Location(), gp_Dir(0, 1, 0), axis.Direction()) : gp_Trsf();
            frame.SetTranslationPart(axis.Location().XYZ());
            json["joint_type"] = static_cast<int>(type);
        } else {
            json["joint_type"] = static_cast<int>(mechanism.Slides(i) ? JointLinear : JointRotary);
            for (int c = 1; c <= 6; ++c) {
                json["joint_axis"].append(c <= 3 ? axis.Location().Coord(c) : axis.Direction().Coord(c - 3));
            }
        }
        json["name"] = "Link" + std::to_string(i + 1);
        json["joint_value"] = 0.0;
        json["link_hash"] = Json::UInt64(100 + i);
        json["parent_link_hash"] = Json::UInt64(i == 0 ? 0 : 99 + i);
        json["center_trsf"] = DataHandle::TrsfToJsonSix(parent.Inverted() * frame);
        json["axis_min"] = mechanism.Slides(i) ? 0.0 : -170.0;
        json["axis_max"] = mechanism.Slides(i) ? 9000.0 : 175.0;
        link = entity->UpdateLinkRodPara(json, false);
        link->models.push_back(Block(gp_Trsf()));
        parent = frame;
    }
    entity->AddFlange(std::make_shared<Flange>(link, parent.Inverted() * mechanism.flange));
    entity->Initial();
    entity->UpdateAssembleData();
    return entity;
}

/// Mount data for a flange on a link of a carrier.
inline Json::Value Place(std::uint64_t link, int index) {
    Json::Value place;
    place["link_hash"] = Json::UInt64(link);
    place["install_index"] = index;
    return place;
}

/// Parameter of suites that run for several mechanisms.
struct Case {
    const char* name;
    Mechanism (*make)();
};
inline constexpr auto NameOf = [](const auto& info) { return std::string(info.param.name); };

/// Joint values within +-2.9 rad (or 0 to 3000 mm), coupled where the wrist is.
inline std::vector<double> RandomValues(const Mechanism& mechanism, std::mt19937& random) {
    std::uniform_real_distribution<double> angle(-2.9, 2.9);
    std::uniform_real_distribution<double> length(0, 3000);
    std::vector<double> values;
    for (std::size_t i = 0; i < mechanism.axes.size(); ++i) {
        values.push_back(mechanism.Slides(i) ? length(random) : angle(random));
    }
    if (mechanism.coupled) {
        values[5] = -values[4];
    }
    return values;
}

} // namespace sample
