#pragma once

#include <AIS_InteractiveContext.hxx>
#include <Aspect_DisplayConnection.hxx>
#include <Bnd_Box.hxx>
#include <Image_AlienPixMap.hxx>
#include <V3d_View.hxx>
#include <Xw_Window.hxx>
#include <filesystem>

namespace cell {

/// Size of a single picture, pixels.
inline constexpr int PictureWidth = 1280;
inline constexpr int PictureHeight = 960;

/// The Open CASCADE viewer on a window of its own, for pictures never shown. View shapes that are displayed
/// while it lives appear in it.
class Viewer {
public:
    /// @throws InputError where there is no display to draw on.
    Viewer(int width, int height, bool shown = false);
    ~Viewer();
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    const opencascade::handle<AIS_InteractiveContext>& Context() const { return context; }
    const opencascade::handle<V3d_View>& View() const { return view; }
    const opencascade::handle<Xw_Window>& Window() const { return window; }
    const opencascade::handle<Aspect_DisplayConnection>& Connection() const { return connection; }
    /// Turns the camera to the three-quarter view and brings it close enough for the box to fill the frame.
    void LookAt(const Bnd_Box& box);
    /// The picture as it is now; empty where it cannot be made.
    opencascade::handle<Image_AlienPixMap> Grab();
    /// @return whether the picture could be made and written. The name's extension tells the format.
    bool Save(const std::filesystem::path& file);

private:
    void SetUpLights(const opencascade::handle<V3d_Viewer>& viewer);
    void SetUpView();

    int width;
    int height;
    opencascade::handle<Aspect_DisplayConnection> connection;
    opencascade::handle<Xw_Window> window;
    opencascade::handle<AIS_InteractiveContext> context;
    opencascade::handle<V3d_View> view;
};

} // namespace cell
