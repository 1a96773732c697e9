#pragma once

#include <array>
#include <host/tools/DataHandle.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <json/value.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/RobotEntity.h>
#include <memory>
#include <numbers>
#include <vector>

constexpr double Deg = std::numbers::pi / 180;

/// One row of a modified Denavit-Hartenberg table: a (mm), alpha (rad), d (mm), theta (rad).
using Row = std::array<double, 4>;

/// A mid-size six-axis arm with a spherical wrist, reaching 1.6 m.
inline const std::vector<Row> SampleTable = {
    {0, 0, 500, 0},      {150, -90 * Deg, 0, -90 * Deg}, {700, 0, 0, 0}, {130, -90 * Deg, 710, 0},
    {0, 90 * Deg, 0, 0}, {0, -90 * Deg, 90, 180 * Deg},
};

/// X_PL: a link in the frame of the one before it, RotX(alpha) * TransX(a) * RotZ(theta) * TransZ(d).
inline gp_Trsf FrameOfRow(const Row& row) {
    const auto [a, alpha, d, theta] = row;
    gp_Trsf aboutX;
    aboutX.SetRotation(gp::OX(), alpha);
    gp_Trsf alongX;
    alongX.SetTranslation(gp_Vec(a, 0, 0));
    gp_Trsf aboutZ;
    aboutZ.SetRotation(gp::OZ(), theta);
    gp_Trsf alongZ;
    alongZ.SetTranslation(gp_Vec(0, 0, d));
    return aboutX * alongX * aboutZ * alongZ;
}

/// A link that turns about its own Z, as the framework reads it.
inline Json::Value LinkOfRow(std::size_t number, const Row& row) {
    Json::Value link;
    link["name"] = "Link" + std::to_string(number);
    link["link_hash"] = Json::UInt64(number);
    link["parent_link_hash"] = Json::UInt64(number - 1); // 0 is the base
    link["joint_type"] = static_cast<int>(JointZ);
    link["joint_value"] = 0.0;
    link["center_trsf"] = DataHandle::TrsfToJsonSix(FrameOfRow(row));
    link["axis_min"] = -170.0; // degrees
    link["axis_max"] = 170.0;
    return link;
}

/// The arm, the sixth frame being its flange, and the record that says its six values are independent.
inline std::unique_ptr<RobotEntity> MakeSampleArm(std::uint64_t hash) {
    GenericEntityConfig structure;
    structure.SetName("arm");
    structure.SetHashIndex(hash);
    structure.SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    for (std::size_t i = 0; i < SampleTable.size(); ++i) {
        structure.UpdateLinkRodPara(LinkOfRow(i + 1, SampleTable[i]), false);
    }
    structure.AddFlange(std::make_shared<Flange>(structure.GetEndLink(0), gp_Trsf()));
    CoupedValue& coupling = GrpConfig::GetCoupledValue(hash);
    for (int i = 0; i < 6; ++i) {
        coupling.index[i] = i;
    }
    auto arm = std::make_unique<RobotEntity>(&structure); // takes the structure over
    arm->UpdateLinkModelNames();
    return arm;
}
