#include <AIS_DisplayMode.hxx>
#include <Aspect_DisplayConnectionDefinitionError.hxx>
#include <OpenGl_GraphicDriver.hxx>
#include <V3d_AmbientLight.hxx>
#include <V3d_DirectionalLight.hxx>
#include <V3d_Viewer.hxx>
#include <cell/InputError.h>
#include <cstdlib>
#include <host/view/ViewContext.h>
#include <scene/Picture.h>
#include <scene/Viewer.h>

namespace cell {

namespace {

constexpr int Samples = 8;
constexpr int ShadowMap = 4096;
constexpr double FieldOfView = 26; // degrees; short enough to keep the arm's proportions
constexpr double Margin = 0.02;

const Quantity_Color Sky(0.74, 0.82, 0.90, Quantity_TOC_sRGB);
const Quantity_Color Horizon(0.97, 0.98, 0.99, Quantity_TOC_sRGB);

opencascade::handle<Aspect_DisplayConnection> Connect() {
    const char* display = std::getenv("DISPLAY");
    try {
        return new Aspect_DisplayConnection();
    } catch (const Aspect_DisplayConnectionDefinitionError&) {
        throw InputError("mechanism-cell", "DISPLAY", display != nullptr ? display : "not set",
                         "a display to draw on; without a screen: xvfb-run -a mechanism-cell render ...");
    }
}

opencascade::handle<V3d_DirectionalLight> MakeLight(const gp_Dir& direction, double strength) {
    opencascade::handle<V3d_DirectionalLight> light = new V3d_DirectionalLight(direction, Quantity_NOC_WHITE);
    light->SetIntensity(static_cast<Standard_ShortReal>(strength));
    return light;
}

} // namespace

Viewer::Viewer(int width_, int height_, bool shown) : width(width_), height(height_), connection(Connect()) {
    opencascade::handle<OpenGl_GraphicDriver> driver = new OpenGl_GraphicDriver(connection);
    opencascade::handle<V3d_Viewer> viewer = new V3d_Viewer(driver);
    SetUpLights(viewer);
    window = new Xw_Window(connection, "mechanism-cell", 0, 0, width, height);
    window->SetVirtual(!shown);
    view = viewer->CreateView();
    view->SetWindow(window);
    SetUpView();
    context = new AIS_InteractiveContext(viewer);
    context->SetDisplayMode(AIS_Shaded, Standard_False);
    ViewContext::SetCurrent(context);
}

Viewer::~Viewer() {
    ViewContext::SetCurrent(nullptr);
    context->RemoveAll(Standard_False);
    view->Remove();
}

void Viewer::SetUpLights(const opencascade::handle<V3d_Viewer>& viewer) {
    opencascade::handle<V3d_AmbientLight> ambient = new V3d_AmbientLight(Quantity_NOC_WHITE);
    ambient->SetIntensity(0.55F);
    const auto key = MakeLight(gp_Dir(-0.50, 0.62, -1.45), 1.6);
    key->SetCastShadows(Standard_True);
    const auto fill = MakeLight(gp_Dir(-1.0, -0.25, -0.35), 0.9);
    for (const opencascade::handle<V3d_Light>& light :
         {opencascade::handle<V3d_Light>(ambient), opencascade::handle<V3d_Light>(key),
          opencascade::handle<V3d_Light>(fill)}) {
        viewer->AddLight(light);
        viewer->SetLightOn(light);
    }
}

void Viewer::SetUpView() {
    view->SetShadingModel(Graphic3d_TOSM_FRAGMENT);
    view->SetBgGradientColors(Sky, Horizon, Aspect_GFM_VER);
    Graphic3d_RenderingParams& params = view->ChangeRenderingParams();
    params.NbMsaaSamples = Samples;
    params.IsShadowEnabled = Standard_True;
    params.ShadowMapResolution = ShadowMap;
    view->Camera()->SetProjectionType(Graphic3d_Camera::Projection_Perspective);
    view->Camera()->SetFOVy(FieldOfView);
}

void Viewer::LookAt(const Bnd_Box& box) {
    view->SetProj(1.0, -1.15, 0.62);
    view->FitAll(box, Margin, Standard_False);
    view->ZFitAll();
}

opencascade::handle<Image_AlienPixMap> Viewer::Grab() {
    view->Redraw();
    V3d_ImageDumpOptions options;
    // A window on the screen has the size that its user gave it.
    window->Size(options.Width, options.Height);
    options.BufferType = Graphic3d_BT_RGB;
    opencascade::handle<Image_AlienPixMap> picture = new Image_AlienPixMap();
    if (!view->ToPixMap(*picture, options)) {
        picture->Clear();
    }
    return picture;
}

bool Viewer::Save(const std::filesystem::path& file) { return SavePicture(*Grab(), file); }

} // namespace cell
