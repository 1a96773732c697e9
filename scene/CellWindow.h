#pragma once

#include <AIS_ViewController.hxx>
#include <functional>
#include <scene/Viewer.h>

namespace cell {

/// The window that a viewer draws into: hands mouse gestures to the camera (left orbits, middle pans, wheel
/// and right zoom) and keys to its owner, and draws again what has changed.
class CellWindow : public AIS_ViewController {
public:
    using OnKey = std::function<void(Aspect_VKey key, bool shift)>;

    CellWindow(Viewer& viewer_, OnKey onKey_);

    /// Handles what has arrived and draws. @return whether the window is still open.
    bool Refresh();
    /// Waits until something arrives, or for the time (ms).
    void Wait(int milliseconds);
    void Close() { open = false; }
    bool IsOpen() const { return open; }

    void KeyDown(Aspect_VKey key, double time, double pressure) override;
    void ProcessExpose() override;
    void ProcessConfigure(bool resized) override;
    void ProcessClose() override { open = false; }

private:
    Viewer& viewer;
    OnKey onKey;
    bool open = true;
};

} // namespace cell
