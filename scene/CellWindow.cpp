#include <Aspect_DisplayConnection.hxx>
#include <Xw_Window.hxx>
#include <poll.h>
#include <scene/CellWindow.h>
// Included last, since X11 defines macros such as None and Bool.
#include <X11/Xlib.h>

namespace cell {

namespace {

/// The kernel declares the same structure under a name of its own.
Display* DisplayOf(const Viewer& viewer) {
    return reinterpret_cast<Display*>(viewer.Connection()->GetDisplayAspect());
}

} // namespace

CellWindow::CellWindow(Viewer& viewer_, OnKey onKey_) : viewer(viewer_), onKey(std::move(onKey_)) {
    Display* display = DisplayOf(viewer);
    const auto& window = viewer.Window();
    XSelectInput(display, window->XWindow(),
                 ExposureMask | StructureNotifyMask | KeyPressMask | KeyReleaseMask | ButtonPressMask |
                     ButtonReleaseMask | PointerMotionMask | FocusChangeMask);
    Atom close = XInternAtom(display, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(display, window->XWindow(), &close, 1);
    window->Map();
    XSync(display, False);
}

bool CellWindow::Refresh() {
    Display* display = DisplayOf(viewer);
    while (open && XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        viewer.Window()->ProcessMessage(*this, event);
    }
    if (open) {
        FlushViewEvents(viewer.Context(), viewer.View(), true);
    }
    return open;
}

void CellWindow::Wait(int milliseconds) {
    Display* display = DisplayOf(viewer);
    if (XPending(display) == 0) {
        pollfd arrival{ConnectionNumber(display), POLLIN, 0};
        poll(&arrival, 1, milliseconds);
    }
}

void CellWindow::KeyDown(Aspect_VKey key, double time, double pressure) {
    AIS_ViewController::KeyDown(key, time, pressure);
    onKey(key, (Keys().Modifiers() & Aspect_VKeyFlags_SHIFT) != 0);
}

void CellWindow::ProcessExpose() { viewer.View()->Invalidate(); }

void CellWindow::ProcessConfigure(bool resized) {
    if (resized) {
        viewer.View()->MustBeResized();
        viewer.View()->Invalidate();
    }
}

} // namespace cell
