#pragma once

#include <BRepCheck_Analyzer.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Iterator.hxx>
#include <gtest/gtest.h>
#include <host/tools/ShapeHandle.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>
#include <memory>
#include <support/Registrar.h>
#include <support/SampleMechanisms.h>

/// A robot of a registered system, on the ground or on a carrier.
struct Cell {
    static constexpr std::uint64_t Hash = 91;

    explicit Cell(const Registrar::Layout& layout = {}) : registrar(Hash, layout) {
        GrpConfig::GetCoupledValue(Hash).index[0] = 0;
    }

    /// Mounts the robot on a carrier with one fixed model, at the frame `place`.
    void Mount(const TopoDS_Shape& fixedModel, const gp_Trsf& place) {
        carrier.SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
        if (!fixedModel.IsNull()) {
            carrier.AddFixMdl(new ShapeEntity(fixedModel, Uuid::CreateUuid()));
        }
        carrier.AddFlange(std::make_shared<Flange>(nullptr, place));
        Carry(robot);
    }

    void Carry(RobotEntity& carried) {
        Json::Value where;
        where["link_hash"] = Json::UInt64(0);
        where["install_index"] = 0;
        carrier.AssembleOtherModel(&carried, where);
    }

    static gp_Trsf Hanging(double height) {
        gp_Trsf over;
        over.SetRotation(gp::OX(), std::numbers::pi);
        over.SetTranslationPart(gp_Vec(0, 0, height));
        return over;
    }

    TopoDS_Shape Shown() const { return workspace.GetDisplayShape()->Shape(); }

    /// The solids of the envelope; fails where one is not a solid.
    std::vector<TopoDS_Shape> Solids() const { return SolidsOf(Shown()); }
    static std::vector<TopoDS_Shape> SolidsOf(const TopoDS_Shape& shape) {
        std::vector<TopoDS_Shape> solids;
        for (TopExp_Explorer it(shape, TopAbs_SOLID); it.More(); it.Next()) {
            EXPECT_TRUE(BRepCheck_Analyzer(it.Current()).IsValid());
            EXPECT_TRUE(BRep_Tool::IsClosed(TopExp_Explorer(it.Current(), TopAbs_SHELL).Current()));
            EXPECT_GT(ShapeHandle::GetAreaOrVol(it.Current()), 0);
            solids.push_back(it.Current());
        }
        return solids;
    }

    Registrar registrar;
    GenericEntityConfig carrier;
    RobotEntity robot{sample::Build(sample::SixAxisArm(), Hash).get()};
    RobotWorkspace& workspace = *robot.GetWorkspace();
};
