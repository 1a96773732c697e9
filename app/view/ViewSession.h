#pragma once

#include <cell/plan/Jog.h>
#include <cell/plan/Reach.h>
#include <chrono>
#include <scene/CellWindow.h>
#include <scene/Scene.h>

namespace cell {

/// A cell in a window: the camera in the mouse, axes and motions in the keys.
class ViewSession {
public:
    explicit ViewSession(const Cell& cell_);

    /// Until the window is closed.
    void Run();

private:
    void Plan();
    void HandleKey(Aspect_VKey key, bool shift);
    bool HandleMotionKey(Aspect_VKey key);
    bool HandleToggle(Aspect_VKey key);
    void Jogged();
    void ShowStep(std::size_t newStep);
    void ChooseMotion(std::size_t number);
    void Advance();
    void UpdateMarks();
    void ToggleReach();
    void ToggleMaxReach();
    void ForEachReach(const std::function<void(const Reach&)>& show);
    void SavePicture();
    void ShowStatus(const std::string& newNote = "");
    std::string MotionText() const;

    const Cell& cell;
    Viewer viewer;
    Scene scene;
    CellWindow window;
    Jog jog;
    std::vector<PlannedMotion> plan;
    std::size_t motion = 0;
    std::size_t step = 0;
    bool playing = false;
    bool planning = false;
    bool cancelled = false;
    bool triads = false;
    bool reach = false;
    bool maxReach = false;
    bool paths = true;
    bool help = false;
    int pictures = 0;
    std::string note; ///< shown once, with the next status
    std::chrono::steady_clock::time_point lastTick;
};

} // namespace cell
