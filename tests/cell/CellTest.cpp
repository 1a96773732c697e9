#include "Documents.h"

#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepTools.hxx>
#include <STEPControl_Writer.hxx>
#include <StlAPI_Writer.hxx>
#include <cell/model/JointValues.h>
#include <cell/model/SystemValues.h>
#include <support/TrsfMatcher.h>

using namespace cell;
using testing::HasSubstr;

namespace {

constexpr double FileTolerance = 1e-5; // mm

TEST(Mounts, WhatIsMountedFollowsItsCarrier) {
    const Cell cell = Cell::Load(Example("cells/rail_and_positioner.json"));
    const System& system = cell.Systems().front();
    GrpState state(system.Hash());
    state.SetValues({0.3, -0.2, 0.4, 1.0, -0.5, 2.0, 4321.5, -0.7, 1.1});
    MoveTo(system, state);
    gp_Trsf carriage;
    carriage.SetTranslation(gp_Vec(0, 4321.5 + 125, 340));
    EXPECT_THAT(system.robot->GetRootMdlTrsf(), IsTrsf(carriage));
    EXPECT_THAT(cell.Find("torch")->GetRootMdlTrsf(), IsTrsf(system.robot->GetCurrentTrsfTool0()));
    EXPECT_THAT(cell.Find("flanged_pipe")->GetRootMdlTrsf(),
                IsTrsf(system.benches.front()->GetCurrentTrsfTool0()));
    const Cell other = Cell::Load(Example("cells/arc_welding.json"));
    RobotEntity& alone = *other.Robots().front();
    alone.SetRootMdlTrsf(gp_Trsf());
    MoveTo(alone, state.GetValues(Robot));
    EXPECT_THAT(system.robot->GetCurrentTrsfTCP(), IsTrsf(carriage * alone.GetCurrentTrsfTCP()));
    ResetSystem(system);
    EXPECT_EQ(system.robot->GetRootMdlTrsf().TranslationPart().Y(), 125);
}

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

using Format = std::pair<const char*, void (*)(const TopoDS_Shape& shape, const std::string& file)>;
class ShapeFile : public testing::TestWithParam<Format> {};

TEST_P(ShapeFile, IsReadInMillimetresOrRefused) {
    const Folder folder;
    const std::string name = std::string("part.") + GetParam().first;
    const std::filesystem::path file = folder.path / name;
    GetParam().second(BRepPrimAPI_MakeBox(10, 20, 30).Shape(), file.string());
    Json::Value json = Parsed(R"({"name": "part", "mechanisms": [{"name": "part", "kind": "workpiece"}]})");
    json["mechanisms"][0]["hash"] = 9;
    json["mechanisms"][0]["file"] = name;
    const auto cellFile = folder.WriteJson("cell.json", json);
    {
        const Cell cell = Cell::Load(cellFile);
        const auto parts = cell.Find("part")->GetFixMdls();
        ASSERT_EQ(parts.size(), 1U);
        Bnd_Box box;
        BRepBndLib::Add(parts.front()->Shape(), box);
        box.SetGap(0);
        EXPECT_LE(box.CornerMax().Distance(gp_Pnt(10, 20, 30)), FileTolerance);
    }
    const auto length = std::filesystem::file_size(file);
    for (const std::uintmax_t kept : {length - 30, length * 9 / 10, length / 2, std::uintmax_t{90}}) {
        std::filesystem::resize_file(file, kept);
        EXPECT_THAT(ReportOf(cellFile), HasSubstr(name + ": holds no faces, expected a shape"))
            << "of " << length << " bytes " << kept;
    }
    std::filesystem::remove(file);
    EXPECT_THAT(ReportOf(cellFile),
                HasSubstr(name + ": cannot be read (No such file or directory), expected"));
    json["mechanisms"][0]["file"] = "part.obj";
    EXPECT_THAT(ReportOf(folder.WriteJson("cell.json", json)),
                HasSubstr("mechanisms[0].file: \"part.obj\", expected a file that ends in .step"));
}

INSTANTIATE_TEST_SUITE_P(Formats, ShapeFile,
                         testing::Values(Format{"step", WriteStep}, Format{"brep", WriteBRep},
                                         Format{"stl", WriteStl}),
                         [](const auto& entry) { return std::string(entry.param.first); });

} // namespace
