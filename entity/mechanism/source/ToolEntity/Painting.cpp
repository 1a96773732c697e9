#include "Failure.h"

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <Prs3d_Drawer.hxx>
#include <Quantity_Color.hxx>
#include <array>
#include <cmath>
#include <host/tools/CADParamConfig.h>
#include <host/tools/gpHandle.h>
#include <mechanism/ToolEntity.h>
#include <utility>

using namespace mechanism_detail;

namespace {

/// Sizes (mm) that differ by less are equal: the cone is for display only.
constexpr double SizeTolerance = 1.0;
constexpr double FrameTolerance = 1e-7;
constexpr double MeshAngle = 0.3490658503988659;
constexpr double MeshDeflection = 2.0;
constexpr auto ConeColour = static_cast<Quantity_NameOfColor>(3);
constexpr double ConeTransparency = 0.8;

/// Parameter keys under which a tool stores the sizes of its cone.
struct ConeSize {
    const char* key;
    double CADParamConfig::*configured;
};

constexpr std::array<ConeSize, 3> ConeSizes{{{"up_radius", &CADParamConfig::paintUpRadius},
                                             {"down_radius", &CADParamConfig::paintDownRadius},
                                             {"paint_length", &CADParamConfig::paintLength}}};

TopoDS_Shape MakeCone(const gp_Trsf& place) {
    const CADParamConfig& config = *CADParamConfig::GetInstance();
    TopoDS_Shape cone =
        BRepPrimAPI_MakeCone(config.paintUpRadius, config.paintDownRadius, config.paintLength).Shape();
    const BRepMesh_IncrementalMesh mesh(cone, ViewShape::GetMeshPara(nullptr, MeshAngle, MeshDeflection));
    cone.Location(TopLoc_Location(place) * cone.Location());
    return cone;
}

} // namespace

void ToolEntity::SetPaintedTool() {
    const CADParamConfig& config = *CADParamConfig::GetInstance();
    if (workType != WorkTypePainting) {
        return;
    }
    if (!config.paintShown) {
        paintIsShown = false;
        RemoveSubMdl(paintedMdl);
        return;
    }
    if (paintIsShown && CheckPaintData()) {
        return;
    }
    const Json::Value parametersBefore = parameters;
    const bool wasShown = std::exchange(paintIsShown, true);
    for (const auto& [key, configured] : ConeSizes) {
        parameters[key] = config.*configured;
    }
    try {
        UpdatePaintedModel(toolTrsf);
    } catch (...) {
        // Otherwise the old cone would later be taken for one of the new sizes.
        parameters = parametersBefore;
        paintIsShown = wasShown;
        throw;
    }
}

bool ToolEntity::CheckPaintData() const {
    const CADParamConfig& config = *CADParamConfig::GetInstance();
    for (const auto& [key, configured] : ConeSizes) {
        // Written so that a stored NaN does not pass.
        if (!(std::abs(parameters[key].asDouble() - config.*configured) < SizeTolerance)) {
            return false;
        }
    }
    return !paintedMdl.IsNull() &&
           gpHandle::sameTrsf(paintedMdl->Shape().Location().Transformation(), toolTrsf, FrameTolerance);
}

void ToolEntity::UpdatePaintedModel(const gp_Trsf& trsf) {
    if (workType != WorkTypePainting || !paintIsShown) {
        return;
    }
    if (IsLoadMeshModel()) {
        constexpr int line = 343; // fixed: hosts identify the record by its line
        Log(spdlog::level::debug, family::ToolEntity, line, "ToolEntity::UpdatePaintedModel",
            "正在构建喷涂模型中，请稍后重试");
        return;
    }
    const TopoDS_Shape cone = MakeCone(trsf);
    if (paintedMdl.IsNull()) {
        paintedMdl = new ShapeEntity(cone, Uuid::CreateUuid());
    } else {
        paintedMdl->SetShape(cone);
    }
    paintedMdl->SetTransformation(GetRootMdlTrsf(), true);
    AddSubMdlList({paintedMdl}, true);
    paintedMdl->takesPartInCollision = false;
    paintedMdl->countsForExtents = false;
    paintedMdl->CreateBVHMdl(false);
    ColorLayer layer;
    Quantity_Color(ConeColour).Values(layer.red, layer.green, layer.blue, Quantity_TOC_RGB);
    layer.transparency = ConeTransparency;
    paintedMdl->SetShapeColorLayer(layer);
    paintedMdl->RedisplayShape(true, false);
    UpdateWatertightMeshModel(cone, false, true);
}
