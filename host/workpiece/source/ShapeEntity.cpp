#include <host/workpiece/ShapeEntity.h>

#include <gp_Trsf.hxx>
#include <utility>

IMPLEMENT_STANDARD_RTTIEXT(ShapeEntity, ViewShape)

ShapeEntity::ShapeEntity(const TopoDS_Shape& shape, Uuid identity) : ViewShape(shape, std::move(identity)) {}

void ShapeEntity::SetTransformation(const gp_Trsf& trsf, bool refresh) {
    const PrsMgr_PresentableObject* const parent = Parent();
    SetLocalTransformation(parent != nullptr ? parent->Transformation().Inverted() * trsf : trsf);
    if (refresh) {
        RedisplayShape(false, false);
    }
}
