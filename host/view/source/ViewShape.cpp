#include <host/view/ViewShape.h>

#include <Prs3d_Drawer.hxx>
#include <atomic>
#include <host/view/TriangleModel.h>
#include <utility>

IMPLEMENT_STANDARD_RTTIEXT(ViewShape, BaseViewShape)

namespace {

// Largest deviation (mm) of the triangles of a distance query from a curved face.
constexpr double QueryDeflection = 0.05;

std::uint64_t NextSerial() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

} // namespace

ViewShape::ViewShape(const TopoDS_Shape& shape, Uuid identity)
    : BaseViewShape(shape), id(std::move(identity)), serial(NextSerial()) {}

ViewShape::~ViewShape() = default;

void ViewShape::SetPrimitiveProperty(const std::string& primitiveName, const Uuid& primitiveId) {
    primitive = {primitiveName, primitiveId};
}

void ViewShape::CreateBVHMdl(bool keep) { CreateBVHMdl(TopoDS_Shape(), keep); }

void ViewShape::CreateBVHMdl(const TopoDS_Shape& shape, bool keep) {
    const std::scoped_lock lock(trianglesLock);
    if (!keep || (!triangles && triangleSource.IsNull())) {
        triangleSource = shape;
        triangles.reset();
    }
}

void ViewShape::OnGeometryChanged() {
    const std::scoped_lock lock(trianglesLock);
    if (triangleSource.IsNull()) {
        triangles.reset();
    }
}

std::shared_ptr<const TriangleModel> ViewShape::GetBVHMdl() const {
    const std::scoped_lock lock(trianglesLock);
    if (!triangles) {
        triangles = std::make_shared<TriangleModel>(triangleSource.IsNull() ? Shape() : triangleSource,
                                                    QueryDeflection);
    }
    return triangles;
}

IMeshTools_Parameters ViewShape::GetMeshPara(const opencascade::handle<Prs3d_Drawer>& drawer, double angle,
                                             double deflection) {
    IMeshTools_Parameters parameters;
    parameters.Angle = angle;
    parameters.Deflection = deflection;
    parameters.Relative = !drawer.IsNull() && drawer->HasOwnDeviationCoefficient();
    if (parameters.Relative) {
        parameters.Deflection = drawer->DeviationCoefficient();
    }
    return parameters;
}
