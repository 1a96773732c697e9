#include <cell/Commands.h>
#include <cell/InputError.h>
#include <cell/JointValues.h>
#include <cell/OutputFile.h>
#include <cell/Scene.h>
#include <cell/StateFile.h>
#include <optional>

namespace cell {

namespace {

constexpr int Width = 1280;
constexpr int Height = 960;

/// A third through the last motion, where the arm is at work and hides little of what is to come.
std::optional<GrpState> ShownState(const RenderRequest& request, const Cell& cell,
                                   const std::vector<PlannedMotion>& plan) {
    if (!request.state.empty()) {
        return LoadState(request.state, cell);
    }
    if (plan.empty()) {
        return std::nullopt;
    }
    return plan.back().states[plan.back().states.size() / 3];
}

} // namespace

void Render(const RenderRequest& request) {
    if (request.picture.extension() != ".png") {
        throw InputError(request.picture.string(), "--out", request.picture.extension().string(),
                         "a name that ends in .png");
    }
    const Cell cell = Cell::Load(request.file);
    const std::vector<PlannedMotion> plan = PlanMotions(cell, [](std::size_t, std::size_t) {});
    if (auto state = ShownState(request, cell, plan)) {
        MoveTo(*cell.FindSystem(state->GetSystem()), state->GetValues(Robot));
    }
    Viewer viewer(Width, Height);
    Scene scene(viewer);
    for (const Mechanism& mechanism : cell.Mechanisms()) {
        scene.Show(*mechanism.entity);
    }
    for (std::size_t i = 0; i < plan.size(); ++i) {
        scene.ShowPath(plan[i], i);
    }
    scene.ShowFloor();
    viewer.LookAt(scene.Extent());
    WriteWhole(request.picture, [&](const std::filesystem::path& beside) { return viewer.Save(beside); });
}

} // namespace cell
