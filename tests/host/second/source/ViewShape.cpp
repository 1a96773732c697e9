#include <host/view/ViewShape.h>

#include <BRepExtrema_DistShapeShape.hxx>
#include <Prs3d_Drawer.hxx>
#include <TopExp_Explorer.hxx>
#include <gp_Trsf.hxx>
#include <host/view/ViewShapeCollision.h>
#include <limits>
#include <stdexcept>
#include <utility>

IMPLEMENT_STANDARD_RTTIEXT(ViewShape, BaseViewShape)

namespace {

std::uint64_t lastSerial = 1000;

TopoDS_Shape Placed(const opencascade::handle<ViewShape>& model) {
    if (model.IsNull()) {
        throw std::invalid_argument("ViewShapeCollision: null shape");
    }
    const TopoDS_Shape& shape = model->GetMeasuredShape();
    if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_VERTEX).More()) {
        throw std::invalid_argument("ViewShapeCollision: \"" + model->GetName() +
                                    "\", expected faces or points");
    }
    return shape.Moved(TopLoc_Location(model->Transformation()));
}

} // namespace

ViewShape::ViewShape(const TopoDS_Shape& shape, Uuid identity)
    : BaseViewShape(shape), id(std::move(identity)), serial(++lastSerial) {}

void ViewShape::SetPrimitiveProperty(const std::string& primitiveName, const Uuid& primitiveId) {
    primitive = {primitiveName, primitiveId};
}

void ViewShape::CreateBVHMdl(bool keep) { CreateBVHMdl(TopoDS_Shape(), keep); }

void ViewShape::CreateBVHMdl(const TopoDS_Shape& shape, bool keep) {
    if (!keep || standIn.IsNull()) {
        standIn = shape;
    }
}

IMeshTools_Parameters ViewShape::GetMeshPara(const opencascade::handle<Prs3d_Drawer>& drawer, double angle,
                                             double deflection) {
    const bool relative = !drawer.IsNull() && drawer->HasOwnDeviationCoefficient();
    IMeshTools_Parameters parameters;
    parameters.Angle = angle;
    parameters.Relative = relative;
    parameters.Deflection = relative ? drawer->DeviationCoefficient() : deflection;
    return parameters;
}

// The exact distance, whatever the mode: the least one is also one within the tolerance.
ViewShapeCollision::NearestPoint
ViewShapeCollision::CalcPQPToleranceNereastPnt(const opencascade::handle<ViewShape>& a,
                                               const opencascade::handle<ViewShape>& b, double tolerance,
                                               int /*mode*/) {
    constexpr double rounding = 1e-9;
    const BRepExtrema_DistShapeShape search(Placed(a), Placed(b));
    if (!search.IsDone() || !(search.Value() <= tolerance + rounding)) {
        return {false, std::numeric_limits<double>::infinity()};
    }
    return {true, std::min(search.Value(), tolerance)};
}
