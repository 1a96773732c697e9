#include <Prs3d_LineAspect.hxx>
#include <cmath>
#include <scene/Scene.h>

namespace cell {

namespace {

/// Size (mm) assumed for an empty cell.
constexpr double EmptyScene = 1000;

const Quantity_Color Ink(0.16, 0.19, 0.24, Quantity_TOC_sRGB);

Graphic3d_MaterialAspect Matt() {
    Graphic3d_MaterialAspect material(Graphic3d_NOM_PLASTER);
    material.SetSpecularColor(Quantity_NOC_BLACK);
    return material;
}

} // namespace

double Scene::Size() const { return extent.IsVoid() ? EmptyScene : std::sqrt(extent.SquareExtent()); }

opencascade::handle<BaseViewShape> Scene::ShowSolid(const TopoDS_Shape& shape, const Quantity_Color& colour,
                                                    bool matt) {
    opencascade::handle<BaseViewShape> model = new BaseViewShape(shape);
    model->SetMaterial(matt ? Matt() : Graphic3d_MaterialAspect(Graphic3d_NOM_PLASTIC));
    model->SetColor(colour);
    model->Display(1, -1);
    return model;
}

opencascade::handle<BaseViewShape> Scene::ShowLines(const TopoDS_Shape& shape, const Quantity_Color& colour,
                                                    double width, Aspect_TypeOfLine type) {
    opencascade::handle<BaseViewShape> model = new BaseViewShape(shape);
    model->Attributes()->SetWireAspect(new Prs3d_LineAspect(colour, type, width));
    model->Display(0, -1);
    return model;
}

opencascade::handle<AIS_TextLabel> Scene::ShowText(const std::string& text, const gp_Pnt& place,
                                                   double height) {
    opencascade::handle<AIS_TextLabel> label = new AIS_TextLabel();
    label->SetText(TCollection_ExtendedString(text.c_str(), Standard_True));
    label->SetPosition(place);
    label->SetHeight(height);
    label->SetColor(Ink);
    label->SetFont(Font_NOF_SANS_SERIF);
    label->SetFontAspect(Font_FA_Bold);
    // A separate layer keeps names from casting shadows.
    label->SetZLayer(Graphic3d_ZLayerId_Topmost);
    viewer.Context()->Display(label, Standard_False);
    return label;
}

void Scene::ShowCaption(const std::string& text) {
    constexpr int Border = 14; // pixels
    if (!caption.IsNull()) {
        viewer.Context()->Remove(caption, Standard_False);
    }
    caption = new AIS_TextLabel();
    caption->SetText(TCollection_ExtendedString(text.c_str(), Standard_True));
    caption->SetHeight(17);
    caption->SetColor(Ink);
    caption->SetFont(Font_NOF_SANS_SERIF);
    caption->SetDisplayType(Aspect_TODT_SUBTITLE); // readable over any background
    caption->SetColorSubTitle(Quantity_Color(0.95, 0.96, 0.97, Quantity_TOC_sRGB));
    caption->SetTransformPersistence(new Graphic3d_TransformPers(Graphic3d_TMF_2d, Aspect_TOTP_LEFT_LOWER,
                                                                 Graphic3d_Vec2i(Border, Border)));
    caption->SetZLayer(Graphic3d_ZLayerId_TopOSD);
    viewer.Context()->Display(caption, Standard_False);
}

} // namespace cell
