// Showing entities in a viewer of your own: attach its interactive context, display models, move the arm.
// Here the window is never shown and the picture goes into a file; a desktop program passes its own window.
#include "common/SampleArm.h"
#include <AIS_InteractiveContext.hxx>
#include <Aspect_DisplayConnection.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <Image_AlienPixMap.hxx>
#include <OpenGl_GraphicDriver.hxx>
#include <V3d_View.hxx>
#include <V3d_Viewer.hxx>
#include <Xw_Window.hxx>
#include <cstdio>
#include <host/view/ViewContext.h>

namespace {

/// A cylinder in the link's own frame, shown at once.
void AddBody(LinkRod& link, const gp_Ax2& axis, double radius, double length, Quantity_NameOfColor colour) {
    const opencascade::handle<ShapeEntity> body =
        new ShapeEntity(BRepPrimAPI_MakeCylinder(axis, radius, length).Shape(), Uuid::CreateUuid());
    body->SetColor(colour);
    body->Display(/*shaded*/ 1, /*whole shapes*/ 0);
    link.models.push_back(body);
}

} // namespace

int main(int argc, char** argv) {
    const auto connection = opencascade::handle<Aspect_DisplayConnection>(new Aspect_DisplayConnection());
    opencascade::handle<V3d_Viewer> viewer = new V3d_Viewer(new OpenGl_GraphicDriver(connection));
    viewer->SetDefaultLights();
    viewer->SetLightOn();
    const opencascade::handle<V3d_View> view = viewer->CreateView();
    opencascade::handle<Xw_Window> window = new Xw_Window(connection, "arm", 0, 0, 640, 480);
    window->SetVirtual(true);
    view->SetWindow(window);
    view->SetBackgroundColor(Quantity_NOC_WHITE);

    // From here on everything that is displayed appears in this context.
    const opencascade::handle<AIS_InteractiveContext> context = new AIS_InteractiveContext(viewer);
    ViewContext::SetCurrent(context);

    // Bodies are kept in their link's frame. Without a display they work all the same, only unseen.
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(1);
    for (int i = 0; i < arm->GetLinkSize(); ++i) {
        LinkRod& link = *arm->GetLink(static_cast<std::size_t>(i));
        AddBody(link, gp_Ax2(gp_Pnt(0, 0, -100), gp::DZ()), 100 - 12 * i, i < 5 ? 200 : 98,
                Quantity_NOC_GRAY50);
        if (const LinkRod* next = link.GetSubLink(0)) {
            const gp_XYZ way = next->GetCenterTrsf().TranslationPart();
            if (way.Modulus() > 1) {
                AddBody(link, gp_Ax2(gp_Pnt(), gp_Dir(way)), 70 - 8 * i, way.Modulus(), Quantity_NOC_ORANGE);
            }
        }
    }
    arm->UpdateToolFrame(); // the triad hangs on the last link's first body
    arm->SetCurrentValue({20 * Deg, 10 * Deg, 10 * Deg, 0, 40 * Deg, 0}, 0);
    arm->ForwardTrsf(0, /*models follow*/ true, false);

    view->SetProj(1, -1.2, 0.6);
    view->SetUp(0, 0, 1);
    view->FitAll(0.1, Standard_False);
    Image_AlienPixMap picture;
    const bool drawn = view->ToPixMap(picture, 640, 480);
    int painted = 0;
    for (Standard_Size y = 0; y < picture.Height(); ++y) {
        for (Standard_Size x = 0; x < picture.Width(); ++x) {
            painted += picture.PixelColor(static_cast<int>(x), static_cast<int>(y))
                           .GetRGB()
                           .Distance(Quantity_NOC_WHITE) > 0.1;
        }
    }
    std::printf("drawn: %d, the arm covers a fair part of it: %d\n", drawn, painted > 640 * 480 / 40);
    if (argc > 1) {
        std::printf("saved: %d\n", picture.Save(argv[1]));
    }
    ViewContext::SetCurrent(nullptr);
    context->RemoveAll(Standard_False);
}
