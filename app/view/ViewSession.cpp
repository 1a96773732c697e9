#include <app/view/ViewSession.h>
#include <cell/InputError.h>
#include <cell/model/SystemValues.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>

namespace cell {

namespace {

constexpr int Width = 1280;
constexpr int Height = 800;
/// Every motion is played in about this time, short ones in slow motion.
constexpr double SecondsPerMotion = 6;
constexpr double FewestStepsPerSecond = 20;
constexpr int TickTime = 20;    // ms
constexpr int IdleTime = 200;   // ms
constexpr int ReportEvery = 50; // states

constexpr const char* Help = "left / right  move the axis (with shift: finely)\n"
                             "up / down, 1 - 9  choose the axis\n"
                             "space  play or stop,  N  next motion,  . and ,  one state on or back\n"
                             "Home  all axes to zero\n"
                             "W  workspace,  M  maximum reach,  P  paths,  T  frames\n"
                             "F  fit,  S  save a picture,  H  this help,  Q  quit\n"
                             "mouse: left orbits, middle pans, right or wheel zooms";

/// Thrown out of planning.
struct Cancelled {};

} // namespace

ViewSession::ViewSession(const Cell& cell_)
    : cell(cell_), viewer(Width, Height, true), scene(viewer),
      window(viewer, [this](Aspect_VKey key, bool shift) { HandleKey(key, shift); }), jog(cell_) {
    scene.Show(cell);
    scene.ShowToolCentres(cell.Robots());
    viewer.LookAt(scene.Extent());
}

void ViewSession::Run() {
    Plan();
    scene.ShowPaths(cell, plan);
    scene.ShowFloor();
    viewer.LookAt(scene.Extent());
    ShowStatus(cancelled ? "planning cancelled, H for help" : "H for help");
    while (window.Refresh()) {
        window.Wait(playing ? TickTime : IdleTime);
        Advance();
    }
}

/// Keys and mouse are handled while it runs; Esc cancels it, and the cell is shown without motions.
void ViewSession::Plan() {
    planning = true;
    try {
        plan = PlanMotions(cell, [&](std::size_t done, std::size_t total) {
            if (done % ReportEvery == 0) {
                scene.ShowCaption("planning: " + std::to_string(done) + " of " + std::to_string(total) +
                                  " states, Esc cancels");
                viewer.View()->Invalidate();
                if (!window.Refresh() || cancelled) {
                    throw Cancelled();
                }
            }
        });
    } catch (const Cancelled&) {
        cancelled = true;
        jog.Reset();
    }
    planning = false;
}

void ViewSession::Jogged() {
    playing = false;
    UpdateMarks();
}

void ViewSession::UpdateMarks() {
    scene.Follow();
    scene.ShowToolCentres(cell.Robots(), !triads);
    if (triads) {
        scene.ShowTriads(cell, scene.Extent());
    } else {
        scene.HideTriads();
    }
}

void ViewSession::ShowStep(std::size_t newStep) {
    step = std::min(newStep, plan[motion].Steps() - 1);
    MoveToStep(cell, plan[motion], step);
    jog.TakeOver(plan[motion], step);
    UpdateMarks();
}

void ViewSession::ChooseMotion(std::size_t number) {
    motion = number;
    ShowStep(0);
}

/// As many states on as the time since the last tick asks for; from the last motion's end to the first again.
void ViewSession::Advance() {
    if (!playing) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    const double seconds = std::chrono::duration<double>(now - lastTick).count();
    const double rate =
        std::max(FewestStepsPerSecond, static_cast<double>(plan[motion].Steps()) / SecondsPerMotion);
    const auto steps = static_cast<std::size_t>(seconds * rate);
    if (steps == 0) {
        return;
    }
    lastTick = now;
    if (step + 1 >= plan[motion].Steps()) {
        ChooseMotion((motion + 1) % plan.size());
    } else {
        ShowStep(step + steps);
    }
    ShowStatus();
}

void ViewSession::SavePicture() {
    const std::string name = cell.Name() + "_" + std::to_string(++pictures) + ".png";
    ShowStatus(); // without the note of the picture before
    try {
        WriteWhole(name, [&](const std::filesystem::path& file) { return viewer.Save(file); });
        ShowStatus("saved " + name);
    } catch (const InputError& error) {
        ShowStatus(error.what());
    }
}

std::string ViewSession::MotionText() const {
    if (plan.empty()) {
        return "";
    }
    return "\n" + plan[motion].motion->name + ": state " + std::to_string(step + 1) + " of " +
           std::to_string(plan[motion].Steps()) + (playing ? ", playing" : "");
}

void ViewSession::ShowStatus(const std::string& newNote) {
    std::string text = jog.Text() + MotionText();
    if (help) {
        text = Help + ("\n\n" + text);
    }
    note += newNote;
    if (!note.empty()) {
        text += "\n" + note;
        note.clear();
    }
    scene.ShowCaption(text);
    viewer.View()->Invalidate();
}

} // namespace cell
