#include "Faults.h"

#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepTools.hxx>
#include <GProp_GProps.hxx>
#include <STEPControl_Writer.hxx>
#include <StlAPI_Writer.hxx>
#include <cell/CarrierShapes.h>
#include <cell/JointValues.h>
#include <cell/Kinds.h>
#include <cell/Solids.h>
#include <cell/SystemValues.h>
#include <gmock/gmock.h>
#include <host/tools/gpHandle.h>

using namespace cell;

namespace {

// The descriptions are rounded to 1e-6 mm and nine digits; chains of a few metres carry that to here.
constexpr double PositionTolerance = 1e-5; // mm
constexpr double RotationTolerance = 1e-8;
/// Frames that went through the same products in another order, in mm at a few metres.
constexpr double SameFrame = 1e-9;

class CarrierTest : public testing::TestWithParam<const char*> {
protected:
    const JsonNode node = JsonNode::Load(Example("arms") / (std::string(GetParam()) + ".json"));
    const std::string kind = node.At("kind").Text();
    const Folder folder;

    std::shared_ptr<GenericEntityConfig> Build() const {
        Json::Value item(Json::objectValue);
        item["structure"] = node.Value();
        const auto file = folder.Write("item.json", ToText(item));
        return MechanismKinds().at(kind)(JsonNode::Load(file), "carrier", 5);
    }
};

void MoveToSample(GenericEntityConfig& entity, const JsonNode& sample) {
    std::vector<double> values = sample.At("values").Numbers();
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] *= entity.GetLink(i)->jointType == JointLinear ? 1.0 : 3.14159265358979323846 / 180;
    }
    entity.SetCurrentValue(values, 0);
    ASSERT_TRUE(entity.ForwardTrsf(0, true, true));
}

} // namespace

TEST_P(CarrierTest, FlangeStandsWhereAnIndependentSolverPutsIt) {
    const auto entity = Build();
    for (const JsonNode& sample : node.At("samples").Items("samples")) {
        SCOPED_TRACE(sample.Path());
        MoveToSample(*entity, sample);
        const gp_Trsf flange = entity->GetCurrentTrsfTool0();
        const gp_Pnt expected = Point(sample.At("flange_origin_mm").Triple());
        EXPECT_LE(expected.Distance(gp_Pnt(flange.TranslationPart())), PositionTolerance);
        const auto rows = sample.At("flange_rotation").Items("rows");
        for (int row = 0; row < 3; ++row) {
            const gp_XYZ wanted = Point(rows[static_cast<std::size_t>(row)].Triple()).XYZ();
            EXPECT_LE((flange.HVectorialPart().Row(row + 1) - wanted).Modulus(), RotationTolerance);
        }
    }
}

TEST_P(CarrierTest, BodiesAreSoundAndStandOnTheFloor) {
    const Bodies bodies = ShapeCarrier(ReadCarrier(node, kind));
    ASSERT_EQ(bodies.links.size(), node.At("joints").Value().size());
    auto all = bodies.links;
    all.push_back(bodies.base);
    double lowest = 1;
    for (const auto& link : all) {
        ASSERT_FALSE(link.empty());
        for (const Body& body : link) {
            EXPECT_TRUE(BRepCheck_Analyzer(body.shape).IsValid());
            Bnd_Box box;
            BRepBndLib::AddOptimal(body.shape, box, false);
            lowest = std::min(lowest, box.CornerMin().Z());
        }
    }
    EXPECT_NEAR(lowest, 0, PositionTolerance);
}

INSTANTIATE_TEST_SUITE_P(Carriers, CarrierTest,
                         testing::Values("gudel_tmf2_rail_10m", "motoman_motopos_d500",
                                         "abb_irbpa250_d1000_twc"),
                         [](const auto& entry) { return std::string(entry.param); });

TEST(RailCell, WhatIsMountedFollowsItsCarrier) {
    const Cell cell = Cell::Load(Example("cells/rail_and_positioner.json"));
    const System& system = cell.Systems().front();
    GrpState state(system.Hash());
    state.SetValues({0.3, -0.2, 0.4, 1.0, -0.5, 2.0, 4321.5, -0.7, 1.1});
    MoveTo(system, state);
    gp_Trsf carriage;
    carriage.SetTranslation(gp_Vec(0, 4321.5 + 125, 340));
    EXPECT_TRUE(gpHandle::IsSameTrsf(system.robot->GetRootMdlTrsf(), carriage, SameFrame));
    const Cell other = Cell::Load(Example("cells/arc_welding.json"));
    RobotEntity& alone = *other.Robots().front();
    alone.SetRootMdlTrsf(gp_Trsf());
    cell::MoveTo(alone, std::vector<double>{0.3, -0.2, 0.4, 1.0, -0.5, 2.0});
    EXPECT_TRUE(gpHandle::IsSameTrsf(system.robot->GetCurrentTrsfTCP(), carriage * alone.GetCurrentTrsfTCP(),
                                     SameFrame));
    EXPECT_TRUE(gpHandle::IsSameTrsf(cell.Find("flanged_pipe")->GetRootMdlTrsf(),
                                     system.benches.front()->GetCurrentTrsfTool0(), SameFrame));
    ResetSystem(system);
    EXPECT_NEAR(system.robot->GetRootMdlTrsf().TranslationPart().Y(), 125, SameFrame);
}

// --- shapes from files ------------------------------------------------------

namespace {

struct ShapeFormat {
    const char* name;
    void (*write)(const TopoDS_Shape& shape, const std::string& file);
};

void WriteStep(const TopoDS_Shape& shape, const std::string& file) {
    STEPControl_Writer writer;
    writer.Transfer(shape, STEPControl_AsIs);
    writer.Write(file.c_str());
}

void WriteBRep(const TopoDS_Shape& shape, const std::string& file) { BRepTools::Write(shape, file.c_str()); }

void WriteStl(const TopoDS_Shape& shape, const std::string& file) {
    BRepMesh_IncrementalMesh mesh(shape, 0.1);
    StlAPI_Writer().Write(shape, file.c_str());
}

class ShapeFileTest : public testing::TestWithParam<ShapeFormat> {};

Json::Value CellWithFile(const std::string& file) {
    return Parse(
        R"({"name": "part", "mechanisms": [{"name": "part", "kind": "workpiece", "hash": 9, "file": ")" +
        file + "\"}]}");
}

} // namespace

TEST_P(ShapeFileTest, IsReadInMillimetresOrRefused) {
    const Folder folder;
    const std::string file = std::string("part.") + GetParam().name;
    GetParam().write(BRepPrimAPI_MakeBox(10, 20, 30).Shape(), (folder.path / file).string());
    const auto cellFile = folder.Write("cell.json", ToText(CellWithFile(file)));
    {
        const Cell cell = Cell::Load(cellFile);
        const auto parts = cell.Find("part")->GetFixMdls();
        ASSERT_EQ(parts.size(), 1U);
        Bnd_Box box;
        BRepBndLib::Add(parts.front()->Shape(), box);
        box.SetGap(0);
        EXPECT_LE(box.CornerMax().Distance(gp_Pnt(10, 20, 30)), PositionTolerance);
    }
    const auto length = std::filesystem::file_size(folder.path / file);
    for (const std::uintmax_t kept : {length - 30, length * 9 / 10, length / 2, std::uintmax_t{90}}) {
        std::filesystem::resize_file(folder.path / file, kept);
        EXPECT_THAT(ReportOf(cellFile), testing::HasSubstr(file + ": holds no faces, expected a shape"))
            << "of " << length << " bytes " << kept;
    }
    std::filesystem::remove(folder.path / file);
    EXPECT_THAT(ReportOf(cellFile), testing::HasSubstr(file + ": cannot be read, expected"));
}

INSTANTIATE_TEST_SUITE_P(Formats, ShapeFileTest,
                         testing::Values(ShapeFormat{"step", WriteStep}, ShapeFormat{"brep", WriteBRep},
                                         ShapeFormat{"stl", WriteStl}),
                         [](const auto& entry) { return std::string(entry.param.name); });

TEST(ShapeFile, OfAnotherFormatIsRefused) {
    const Folder folder;
    EXPECT_THAT(ReportOf(folder.Write("cell.json", ToText(CellWithFile("part.obj")))),
                testing::HasSubstr("mechanisms[0].file: \"part.obj\", expected a file that ends in .step"));
}
