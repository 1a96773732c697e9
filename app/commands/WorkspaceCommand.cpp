#include <TopExp_Explorer.hxx>
#include <app/commands/Commands.h>
#include <cell/InputError.h>
#include <cell/documents/ShapeOutput.h>
#include <cell/plan/Reach.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>
#include <host/tools/ShapeHandle.h>
#include <json/value.h>
#include <ostream>
#include <scene/Scene.h>
#include <scene/SectionPlot.h>

namespace cell {

namespace {

constexpr double CubicMillimetres = 1e9; // in a cubic metre
constexpr const char* PictureEnd = ".png";
constexpr const char* PlotEnd = ".svg";

void RequireNames(const WorkspaceRequest& request) {
    if (request.target.extension() != PictureEnd && !IsShapeName(request.target)) {
        throw InputError(request.target.string(), "--out", request.target.extension().string(),
                         "a name that ends in .step, .stp, .brep, .stl or .png");
    }
    if (!request.section.empty() && request.section.extension() != PlotEnd &&
        !IsStandardOutput(request.section)) {
        throw InputError(request.section.string(), "--section", request.section.extension().string(),
                         "a name that ends in .svg");
    }
}

/// The robot, what it carries and what carries it, with the envelope around them.
void Draw(const Cell& cell, const Reach& reach, const std::filesystem::path& picture) {
    Viewer viewer(PictureWidth, PictureHeight);
    Scene scene(viewer);
    for (const Mechanism& mechanism : cell.Mechanisms()) {
        const GenericEntity* entity = mechanism.entity.get();
        if (entity == reach.robot || entity == reach.robot->GetMountingEntity() ||
            entity->GetMountingEntity() == reach.robot) {
            scene.Show(*mechanism.entity);
        }
    }
    scene.ShowEnvelope(reach);
    scene.ShowToolCentres({reach.robot});
    scene.ShowFloor();
    viewer.LookAt(scene.Extent());
    WriteWhole(picture, [&](const std::filesystem::path& beside) { return viewer.Save(beside); });
}

} // namespace

void WriteWorkspace(const WorkspaceRequest& request, std::ostream& standard) {
    std::ostream& out = RemarksBeside(request.section, standard);
    RequireNames(request);
    const Cell cell = Cell::Load(request.file);
    const Reach reach = ReachOf(cell, RequireRobot(cell, request.robot));
    if (request.target.extension() == PictureEnd) {
        Draw(cell, reach, request.target);
    } else {
        WriteShape(reach.envelope, request.target);
    }
    if (!request.section.empty()) {
        WriteWhole(request.section, SectionPlot(reach));
    }
    int solids = 0;
    for (TopExp_Explorer it(reach.envelope, TopAbs_SOLID); it.More(); it.Next()) {
        ++solids;
    }
    const double volume = ShapeHandle::GetAreaOrVol(reach.envelope) / CubicMillimetres;
    if (request.json) {
        Json::Value json;
        json["robot"] = reach.robot->GetName();
        json["solids"] = solids;
        json["volume_m3"] = volume;
        for (const std::vector<double>& vertex : reach.section) {
            Json::Value point(Json::arrayValue);
            point.append(vertex[0]);
            point.append(vertex[1]);
            json["section_mm"].append(std::move(point));
        }
        json["reach_mm"] = reach.longest;
        out << JsonText(json);
        return;
    }
    out << "workspace of \"" << reach.robot->GetName() << "\"\n"
        << "  envelope  " << solids << (solids == 1 ? " solid, " : " solids, ") << Rounded(volume, 3)
        << " cubic metres\n"
        << "  section   " << reach.section.size() - 1 << " vertices\n"
        << "  reach     " << Rounded(reach.longest, 1) << " mm\n";
}

} // namespace cell
