#include <algorithm>
#include <cell/model/FollowFreedom.h>
#include <cell/model/FollowMotion.h>
#include <cell/model/SystemValues.h>
#include <planning/SeamMotion.h>
#include <string_view>

namespace cell {

namespace {

/// The longest way along the tool to a path, mm.
constexpr double MostApproach = 1e4;

/// What carries the workpiece: a bench of the system, or a place that does not move.
struct Carried {
    std::optional<std::size_t> bench;
    int flange = 0;
    Rigid work; ///< on the bench's flange, or in the world
};

Carried WhereIs(const Workpiece& workpiece, const System& system, const JsonNode& item) {
    const GenericEntity* carrier = workpiece.GetMountingEntity();
    if (carrier == nullptr) {
        return {std::nullopt, 0, Rigid::From(workpiece.GetRootMdlTrsf())};
    }
    for (std::size_t i = 0; i < system.benches.size(); ++i) {
        if (system.benches[i] == carrier) {
            return {i, workpiece.GetInstallIndex(), Rigid::From(workpiece.GetAssembleTrsf())};
        }
    }
    if (!AxesOf(*carrier).empty()) {
        item.Refuse("workpiece \"" + workpiece.GetName() + "\" on " + carrier->GetName(),
                    "a workpiece on a bench of the system of " + system.robot->GetName() +
                        ", or on one that stands still");
    }
    return {std::nullopt, 0, Rigid::From(workpiece.GetRootMdlTrsf())};
}

/// All parameters of the motion, read and checked.
struct Follow {
    JsonNode item;
    const System* system;
    Carried carried;
    planning::SeamRules rules;
    planning::SeamTask task;
    std::shared_ptr<const planning::CarriedArm> arm;

    std::vector<GrpState> States(const std::vector<GrpState>& keys) const;
    GrpState StateOf(const std::vector<double>& values, GrpState state) const;
    std::vector<double> ValuesOf(GrpState state) const;
};

std::vector<double> Follow::ValuesOf(GrpState state) const {
    std::vector<double> values = state.GetValues(Robot);
    const auto add = [&](const std::vector<double>& more) {
        values.insert(values.end(), more.begin(), more.end());
    };
    add(state.GetValues(Pedestal));
    if (carried.bench) {
        add(state.GetValues(static_cast<EntityName>(Bench + *carried.bench)));
    }
    return values;
}

/// @param state whose other benches stay.
GrpState Follow::StateOf(const std::vector<double>& values, GrpState state) const {
    const planning::AxisValues parts = planning::Split(*arm, values);
    state.SetValues(Robot, {parts.arm.begin(), parts.arm.end()});
    state.SetValues(Pedestal, {parts.carrier.begin(), parts.carrier.end()});
    if (carried.bench) {
        state.SetValues(static_cast<EntityName>(Bench + *carried.bench),
                        {parts.holder.begin(), parts.holder.end()});
    }
    // The pose is taken from the values when they are applied.
    state.SetLocEuler(0, LocEuler());
    return state;
}

std::vector<GrpState> Follow::States(const std::vector<GrpState>& keys) const {
    planning::SeamTask full = task;
    full.start = ValuesOf(keys.front());
    full.end = ValuesOf(keys.back());
    full.air.resize(1);
    for (std::size_t k = 1; k + 1 < keys.size(); ++k) {
        full.air.front().push_back(ValuesOf(keys[k]));
    }
    planning::SeamMotion motion;
    try {
        motion = planning::PlanMotion(planning::SeamPlanner(*arm, rules), full);
    } catch (const std::invalid_argument& error) {
        // "PLACE: VALUE, expected EXPECTATION"
        constexpr std::string_view Between = ", expected ";
        const std::string text = error.what();
        const std::size_t cut = text.find(Between);
        item.Refuse(text.substr(0, cut), cut == std::string::npos ? "paths and freedom that can be planned"
                                                                  : text.substr(cut + Between.size()));
    }
    if (motion.states.empty()) {
        const std::string which =
            task.seams.size() > 1 ? " of path " + std::to_string(motion.blocked + 1) : std::string();
        item.Refuse(motion.why.Stretch(task.seams[motion.blocked].poses.size()) + which,
                    "paths that can be followed; lost there: " + motion.why.Reasons(arm->Arm().Joints()));
    }
    std::vector<GrpState> states;
    for (const planning::MotionState& planned : motion.states) {
        GrpState& state = states.emplace_back(StateOf(planned.values, keys.front()));
        if (planned.leg == planning::MotionState::Leg::Work) {
            state.SetPathStateType(GrpState::PathTypeWork);
        }
    }
    // Key states stay equal to the bit, since thinning searches for them.
    states.front() = keys.front();
    states.back() = keys.back();
    return states;
}

double OptionalLength(const JsonNode& item, const char* key, double otherwise) {
    const auto node = item.Find(key);
    if (node && !(node->Number() >= 0 && node->Number() <= MostApproach)) {
        node->Refuse("a length from 0 to 10000 mm");
    }
    return node ? node->Number() : otherwise;
}

const ToolPath& RequirePath(const JsonNode& name, const std::vector<ToolPath>& paths) {
    const auto found = std::find_if(paths.begin(), paths.end(),
                                    [text = name.Text()](const ToolPath& path) { return path.name == text; });
    if (found == paths.end()) {
        name.Refuse("the name of an earlier motion of kind tool_path");
    }
    return *found;
}

std::vector<planning::SeamPose> PosesOf(const ToolPath& path) {
    std::vector<planning::SeamPose> poses;
    for (const ToolPose& p : path.poses) {
        poses.push_back({{p[0], p[1], p[2]}, {p[3], p[4], p[5]}});
    }
    return poses;
}

void ReadSeams(Follow& follow, const std::vector<KeyState>& keys, const std::vector<ToolPath>& paths) {
    const JsonNode list = follow.item.At("paths");
    const Workpiece* workpiece = nullptr;
    for (const JsonNode& name : list.Items("names of tool paths")) {
        const ToolPath& path = RequirePath(name, paths);
        if (workpiece != nullptr && path.workpiece != workpiece) {
            name.Refuse("a path on the same workpiece as the first one");
        }
        if (workpiece == nullptr) {
            workpiece = path.workpiece;
            follow.carried = WhereIs(*workpiece, *follow.system, follow.item);
        }
        planning::Seam& seam = follow.task.seams.emplace_back();
        seam.poses = PosesOf(path);
        seam.approach = OptionalLength(follow.item, "approach_mm", 0);
        seam.retract = OptionalLength(follow.item, "retract_mm", seam.approach);
    }
    if (follow.task.seams.empty()) {
        list.Refuse("at least one name");
    }
    const auto freedom = ReadFreedom(follow.item, *follow.system, follow.carried.bench, keys.front().state);
    for (planning::Seam& seam : follow.task.seams) {
        seam.freedom = freedom;
    }
}

void ReadRules(Follow& follow) {
    follow.rules.work = follow.carried.work;
    if (const auto node = follow.item.Find("deviation_mm")) {
        follow.rules.distance = node->Length();
    }
    if (const auto node = follow.item.Find("deviation_deg")) {
        follow.rules.angle = node->Positive() * RadiansPerDegree;
    }
    if (const auto node = follow.item.Find("either_way")) {
        follow.task.eitherWay = node->Flag();
    }
}

} // namespace

Interpolation ReadFollow(const JsonNode& item, const std::vector<KeyState>& keys, const System& system,
                         const std::vector<ToolPath>& paths) {
    item.OnlyKeys({"name", "kind", "states", "paths", "tool", "spin_deg", "lead_deg", "work_deg",
                   "stick_out_mm", "pedestal", "benches", "downhand_deg", "approach_mm", "retract_mm",
                   "deviation_mm", "deviation_deg", "either_way"});
    Follow follow{item, &system, {}, {}, {}, nullptr};
    ReadSeams(follow, keys, paths);
    ReadRules(follow);
    const auto& bench = follow.carried.bench;
    try {
        follow.arm = std::make_shared<const planning::CarriedArm>(
            *system.robot, bench ? system.benches[*bench] : nullptr, follow.carried.flange);
    } catch (const std::invalid_argument& error) {
        item.Refuse(error.what(), "an arm whose poses can be solved for joint values");
    }
    return [follow](const std::vector<GrpState>& states) { return follow.States(states); };
}

} // namespace cell
