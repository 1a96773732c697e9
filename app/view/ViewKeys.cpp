#include <app/view/ViewSession.h>
#include <cell/InputError.h>

// What the keys do.

namespace cell {

void ViewSession::HandleKey(Aspect_VKey key, bool shift) {
    if (planning) {
        cancelled = cancelled || key == Aspect_VKey_Escape;
        return;
    }
    if (key == Aspect_VKey_Left || key == Aspect_VKey_Right) {
        jog.Move(key == Aspect_VKey_Right ? 1 : -1, shift);
        Jogged();
    } else if (key == Aspect_VKey_Up || key == Aspect_VKey_Down) {
        jog.Next(key == Aspect_VKey_Down ? 1 : -1);
    } else if (key >= Aspect_VKey_1 && key <= Aspect_VKey_9) {
        jog.Choose(key - Aspect_VKey_1);
    } else if (key == Aspect_VKey_Home) {
        jog.Reset();
        Jogged();
    } else if (key == Aspect_VKey_Q) {
        window.Close();
        return;
    } else if (key == Aspect_VKey_S) {
        SavePicture();
        return;
    } else if (!HandleMotionKey(key) && !HandleToggle(key)) {
        return;
    }
    ShowStatus();
}

bool ViewSession::HandleMotionKey(Aspect_VKey key) {
    if (plan.empty()) {
        return false;
    }
    switch (key) {
    case Aspect_VKey_Space:
        playing = !playing;
        lastTick = std::chrono::steady_clock::now();
        if (playing && step + 1 >= plan[motion].Steps()) {
            ChooseMotion(motion); // from its start again
        }
        return true;
    case Aspect_VKey_N:
        ChooseMotion((motion + 1) % plan.size());
        return true;
    case Aspect_VKey_Period:
        ShowStep(step + 1);
        return true;
    case Aspect_VKey_Comma:
        ShowStep(step > 0 ? step - 1 : 0);
        return true;
    default:
        return false;
    }
}

bool ViewSession::HandleToggle(Aspect_VKey key) {
    switch (key) {
    case Aspect_VKey_T:
        triads = !triads;
        UpdateMarks();
        return true;
    case Aspect_VKey_P:
        paths = !paths;
        scene.SetPathsVisible(paths);
        return true;
    case Aspect_VKey_W:
        ToggleReach();
        return true;
    case Aspect_VKey_M:
        ToggleMaxReach();
        return true;
    case Aspect_VKey_H:
        help = !help;
        return true;
    case Aspect_VKey_F:
        viewer.LookAt(scene.Extent());
        return true;
    default:
        return false;
    }
}

/// A robot that has no region to show says why, and the others show theirs.
void ViewSession::ToggleReach() {
    reach = !reach;
    if (!reach) {
        for (RobotEntity* robot : cell.Robots()) {
            robot->ShowBestWorkspace(false);
        }
        return;
    }
    ShowStatus("building the workspace ...");
    viewer.View()->Redraw(); // at once, and without the keys that wait
    ForEachReach([this](const Reach& of) { scene.ShowEnvelope(of); });
}

void ViewSession::ToggleMaxReach() {
    maxReach = !maxReach;
    if (maxReach) {
        ForEachReach([this](const Reach& of) { scene.ShowMaxReach(of); });
        return;
    }
    for (RobotEntity* robot : cell.Robots()) {
        if (!robot->GetUnsafeWorkspaceModel().IsNull()) {
            robot->GetUnsafeWorkspaceModel()->RemoveFromView();
        }
    }
}

void ViewSession::ForEachReach(const std::function<void(const Reach&)>& show) {
    for (RobotEntity* robot : cell.Robots()) {
        try {
            show(ReachOf(cell, *robot));
        } catch (const InputError& error) {
            note = error.what();
        }
    }
}

} // namespace cell
