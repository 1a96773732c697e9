#include <algorithm>
#include <app/commands/Commands.h>
#include <cell/InputError.h>
#include <cell/model/SystemValues.h>
#include <cell/plan/Reach.h>
#include <cell/plan/StateFile.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>
#include <scene/ContactSheet.h>
#include <scene/Scene.h>

namespace fs = std::filesystem;

namespace cell {

namespace {

/// Pictures of a sheet are half as large either way.
constexpr int SheetPart = 2;

/// A moment of the cell's motion.
struct Moment {
    PlannedMotion* planned;
    std::size_t step;
};

/// Every step of the cell in order; motions that also run together count there alone.
std::vector<Moment> AllMoments(const Cell& cell, std::vector<PlannedMotion>& plan) {
    std::vector<bool> isPart(plan.size(), false);
    for (const Motion& motion : cell.Motions()) {
        for (const std::size_t part : motion.parts) {
            isPart[part] = true;
        }
    }
    std::vector<Moment> moments;
    for (std::size_t i = 0; i < plan.size(); ++i) {
        for (std::size_t step = 0; !isPart[i] && step < plan[i].Steps(); ++step) {
            moments.push_back({&plan[i], step});
        }
    }
    return moments;
}

/// First and last, and the rest evenly between them.
std::vector<Moment> EvenlySpaced(const std::vector<Moment>& moments, std::size_t count) {
    std::vector<Moment> chosen;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t last = moments.size() - 1;
        chosen.push_back(moments[count > 1 ? i * last / (count - 1) : last / 2]);
    }
    return chosen;
}

/// Without a given state the picture shows the last motion at a third of its steps, where the arm is
/// working and hides little of the path.
void Pose(const RenderRequest& request, const Cell& cell, std::vector<PlannedMotion>& plan) {
    if (!request.state.empty()) {
        MoveToNamedState(request.state, cell);
    } else if (!plan.empty()) {
        MoveToStep(cell, plan.back(), plan.back().Steps() / 3);
    }
}

void ShowReaches(const RenderRequest& request, const Cell& cell, Scene& scene) {
    for (RobotEntity* robot : cell.Robots()) {
        if (request.workspace || request.maxReach) {
            const Reach reach = ReachOf(cell, *robot);
            if (request.workspace) {
                scene.ShowEnvelope(reach);
            }
            if (request.maxReach) {
                scene.ShowMaxReach(reach);
            }
        }
    }
}

fs::path NumberedName(const fs::path& picture, std::size_t number, std::size_t count) {
    const std::size_t digits = std::max<std::size_t>(2, std::to_string(count).size());
    std::string text = std::to_string(number);
    text.insert(0, digits - std::min(digits, text.size()), '0');
    return picture.parent_path() / (picture.stem().string() + "_" + text + picture.extension().string());
}

void Save(Viewer& viewer, const fs::path& picture) {
    WriteWhole(picture, [&](const fs::path& beside) { return viewer.Save(beside); });
}

/// The mechanism that is to fill the picture, or null for all of the cell.
GenericEntityConfig* FocusOf(const RenderRequest& request, const Cell& cell) {
    GenericEntityConfig* focus = request.focus.empty() ? nullptr : cell.Find(request.focus);
    if (focus == nullptr && !request.focus.empty()) {
        throw InputError(request.file.string(), "--focus", request.focus,
                         "the name of a mechanism of the cell");
    }
    return focus;
}

void RenderOne(const RenderRequest& request, const Cell& cell, std::vector<PlannedMotion>& plan) {
    Pose(request, cell, plan);
    Viewer viewer(PictureWidth, PictureHeight);
    Scene scene(viewer);
    scene.Show(cell);
    scene.ShowPaths(cell, plan);
    ShowReaches(request, cell, scene);
    scene.ShowToolCentres(cell.Robots(), !request.triads);
    scene.ShowFloor();
    GenericEntityConfig* focus = FocusOf(request, cell);
    const Bnd_Box subject = focus != nullptr ? Scene::ExtentOf(*focus) : scene.Extent();
    if (request.triads) {
        scene.ShowTriads(cell, subject);
    }
    viewer.LookAt(subject);
    Save(viewer, request.picture);
}

/// Shows each moment in turn, all from one place that sees all of them.
class Film {
public:
    Film(const RenderRequest& request_, const Cell& cell_, std::vector<PlannedMotion>& plan,
         const std::vector<Moment>& moments_, int part)
        : request(request_), cell(cell_), moments(moments_),
          viewer(PictureWidth / part, PictureHeight / part), scene(viewer) {
        scene.Show(cell);
        scene.ShowPaths(cell, plan);
        ShowReaches(request, cell, scene);
        GenericEntityConfig* focus = FocusOf(request, cell);
        for (const Moment& moment : moments) {
            MoveToStep(cell, *moment.planned, moment.step);
            scene.Include(cell);
            if (focus != nullptr) {
                subject.Add(Scene::ExtentOf(*focus));
            }
        }
        scene.ShowFloor();
        if (focus == nullptr) {
            subject = scene.Extent();
        }
        viewer.LookAt(subject);
    }

    void Show(std::size_t frame) {
        const Moment& moment = moments[frame];
        MoveToStep(cell, *moment.planned, moment.step);
        scene.Follow();
        scene.ShowToolCentres(cell.Robots(), !request.triads);
        if (request.triads) {
            scene.ShowTriads(cell, subject);
        }
        scene.ShowCaption(moment.planned->motion->name + ", state " + std::to_string(moment.step + 1) +
                          " of " + std::to_string(moment.planned->Steps()));
    }

    Viewer& View() { return viewer; }

private:
    const RenderRequest& request;
    const Cell& cell;
    const std::vector<Moment>& moments;
    Viewer viewer;
    Scene scene;
    Bnd_Box subject; ///< of all pictures
};

void RenderSheet(Film& film, std::size_t count, const fs::path& picture) {
    ContactSheet sheet(static_cast<int>(count), PictureWidth / SheetPart, PictureHeight / SheetPart);
    bool drawn = true;
    for (std::size_t i = 0; i < count; ++i) {
        film.Show(i);
        drawn = sheet.Add(*film.View().Grab()) && drawn;
    }
    WriteWhole(picture, [&](const fs::path& beside) { return drawn && sheet.Save(beside); });
}

void RenderFrames(const RenderRequest& request, const Cell& cell, std::vector<PlannedMotion>& plan) {
    if (plan.empty()) {
        cell.Node().Refuse("no motions", "at least one under motions, to draw frames of it");
    }
    const auto count = static_cast<std::size_t>(request.frames);
    const std::vector<Moment> moments = EvenlySpaced(AllMoments(cell, plan), count);
    Film film(request, cell, plan, moments, request.sheet ? SheetPart : 1);
    if (request.sheet) {
        RenderSheet(film, count, request.picture);
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        film.Show(i);
        Save(film.View(), NumberedName(request.picture, i + 1, count));
    }
}

} // namespace

void Render(const RenderRequest& request) {
    const bool toFiles = request.frames > 0 && !request.sheet;
    if (request.picture.extension() != ".png" && (toFiles || !IsStandardOutput(request.picture))) {
        throw InputError(request.picture.string(), "--out", request.picture.extension().string(),
                         "a name that ends in .png");
    }
    const Cell cell = Cell::Load(request.file);
    FocusOf(request, cell); // refused before anything is planned
    std::vector<PlannedMotion> plan = PlanMotions(cell, [](std::size_t, std::size_t) {});
    if (request.frames > 0) {
        RenderFrames(request, cell, plan);
    } else {
        RenderOne(request, cell, plan);
    }
}

} // namespace cell
