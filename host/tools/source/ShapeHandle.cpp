#include <host/tools/ShapeHandle.h>

#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <Bnd_OBB.hxx>
#include <GProp_GProps.hxx>
#include <Precision.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Ax2.hxx>

TopoDS_Shape ShapeHandle::BndOBBGetTopoShape(const Bnd_OBB& box) {
    const gp_XYZ half(box.XHSize(), box.YHSize(), box.ZHSize());
    if (box.IsVoid() || half.X() < Precision::Confusion() || half.Y() < Precision::Confusion() ||
        half.Z() < Precision::Confusion()) {
        return {};
    }
    const gp_XYZ corner = box.Center() - box.XDirection() * half.X() - box.YDirection() * half.Y() -
                          box.ZDirection() * half.Z();
    const gp_Ax2 frame(corner, gp_Dir(box.ZDirection()), gp_Dir(box.XDirection()));
    return BRepPrimAPI_MakeBox(frame, 2 * half.X(), 2 * half.Y(), 2 * half.Z()).Solid();
}

bool ShapeHandle::CheckTopoDS(const TopoDS_Shape& shape) {
    return !shape.IsNull() && TopExp_Explorer(shape, TopAbs_VERTEX).More() &&
           BRepCheck_Analyzer(shape).IsValid();
}

double ShapeHandle::GetAreaOrVol(const TopoDS_Shape& shape) {
    if (shape.IsNull()) {
        return 0;
    }
    GProp_GProps properties;
    if (TopExp_Explorer(shape, TopAbs_SOLID).More()) {
        BRepGProp::VolumeProperties(shape, properties);
    } else {
        BRepGProp::SurfaceProperties(shape, properties);
    }
    return properties.Mass();
}

gp_Pnt ShapeHandle::GetFaceCenter(const TopoDS_Face& face) {
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(face, properties);
    return properties.CentreOfMass();
}
