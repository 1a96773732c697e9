#include <host/view/ViewShape.h>

#include <utility>

IMPLEMENT_STANDARD_RTTIEXT(ViewShape, BaseViewShape)

ViewShape::ViewShape(const TopoDS_Shape& shape, Uuid identity) : BaseViewShape(shape), id(std::move(identity)) {}
