#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <host/workspace/WorkSpace.h>
#include <json/json.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>
#include <mechanism/ToolEntity.h>
#include <support/Draws.h>
#include <support/Registrar.h>
#include <support/SampleMechanisms.h>
#include <support/SampleTools.h>

/// The described arms, twice: as the record that a robot with the torch mounted on its flange makes of
/// itself, and as joint axes in space, which know nothing of tables.
namespace arms {

inline constexpr double Degree = std::numbers::pi / 180.0;

/// The name of a description, and whether the arm carries a bent torch.
using Case = std::pair<std::string, bool>;

inline std::vector<Case> AllCases() {
    std::vector<Case> cases;
    for (const auto& file : std::filesystem::directory_iterator(ARMS_DIR)) {
        std::ifstream text(file.path());
        Json::Value json;
        text >> json;
        if (json["kind"] == "robot") {
            cases.emplace_back(file.path().stem(), false);
            cases.emplace_back(file.path().stem(), true);
        }
    }
    std::sort(cases.begin(), cases.end());
    return cases;
}

inline std::string NameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.first + (info.param.second ? "_torch" : "");
}

/// Joint values, and where they put the tool centre.
using Pose = std::pair<std::vector<double>, gp_XYZ>;

struct Arm {
    sample::Mechanism mechanism;
    std::vector<std::pair<double, double>> limits;
    gp_Trsf tool;
    WorkSpace::Robot record;

    explicit Arm(const Case& which) {
        std::ifstream text(std::filesystem::path(ARMS_DIR) / (which.first + ".json"));
        text >> json;
        ReadJoints();
        if (which.second) {
            tool = sample::TorchCentre();
        }
        FillRecord(which.second);
    }

    /// Tool centre at joint values, from the axes alone.
    gp_XYZ ToolCentre(const std::vector<double>& q) const {
        return gp_Pnt(tool.TranslationPart()).Transformed(mechanism.FlangeAt(q)).XYZ();
    }

    std::vector<double> Within(std::vector<double> q) const {
        for (std::size_t i = 0; i < q.size(); ++i) {
            q[i] = std::clamp(q[i], limits[i].first, limits[i].second);
        }
        if (mechanism.coupled) {
            q[5] = -q[4];
        }
        return q;
    }

    /// @param stopShare how likely a joint is to stand at one of its stops.
    std::vector<Pose> RandomPoses(int count, unsigned seed, double stopShare = 0) const {
        Draw draw(seed);
        std::vector<Pose> poses;
        for (int i = 0; i < count; ++i) {
            std::vector<double> q;
            for (const auto& [low, high] : limits) {
                const double at = draw.Between(0, 1);
                q.push_back(at < stopShare / 2 ? low : at < stopShare ? high : draw.Between(low, high));
            }
            q = Within(q);
            poses.emplace_back(q, ToolCentre(q));
        }
        return poses;
    }

    /// Moves one joint at a time downhill from q until no step of 1e-4 rad helps, or the cost is low enough.
    template <class Cost>
    double Descend(std::vector<double> q, const Cost& cost, double enough = -INFINITY) const {
        double least = cost(ToolCentre(q));
        for (double step = 0.2; step > 1e-4 && least > enough;) {
            bool moved = false;
            for (std::size_t joint = 0; joint < q.size(); ++joint) {
                for (const double by : {-step, step}) {
                    std::vector<double> tried = q;
                    tried[joint] += by;
                    tried = Within(tried);
                    if (const double found = cost(ToolCentre(tried)); found < least) {
                        least = found;
                        q = tried;
                        moved = true;
                    }
                }
            }
            step = moved ? step : step / 2;
        }
        return least;
    }

    /// The least cost that is found downhill from the best few poses; the first that is low enough ends the
    /// search. Sorts the poses.
    template <class Cost>
    double Search(std::vector<Pose>& poses, const Cost& cost, double enough) const {
        constexpr std::ptrdiff_t starts = 6;
        std::partial_sort(poses.begin(), poses.begin() + starts, poses.end(),
                          [&](const Pose& a, const Pose& b) { return cost(a.second) < cost(b.second); });
        double least = INFINITY;
        for (auto pose = poses.begin(); pose != poses.begin() + starts && least > enough; ++pose) {
            least = std::min(least, Descend(pose->first, cost, enough));
        }
        return least;
    }

private:
    static gp_XYZ Triple(const Json::Value& json) {
        return {json[0].asDouble(), json[1].asDouble(), json[2].asDouble()};
    }

    // The table ends on the last axis where the flange is, as the program sees to for every arm that it
    // reads.
    void ReadJoints() {
        for (const Json::Value& joint : json["joints"]) {
            mechanism.axes.emplace_back(Triple(joint["origin_mm"]), gp_Dir(Triple(joint["axis"])));
            limits.emplace_back(joint["min_deg"].asDouble() * Degree + StopMargin,
                                joint["max_deg"].asDouble() * Degree - StopMargin);
        }
        const Json::Value& flange = json["flange"];
        const gp_Pnt origin(Triple(flange["origin_mm"]));
        mechanism.axes.back().SetLocation(origin);
        mechanism.flange = sample::Frame(origin, Triple(flange["z_axis"]), Triple(flange["x_axis"]));
        mechanism.armStructure = json["arm_structure"].asInt();
        mechanism.coupled = json["coupled"].asBool();
    }

    void FillRecord(bool withTorch) {
        constexpr std::uint64_t hash = 4711;
        const Registrar registrar(hash, {});
        GrpConfig::GetCoupledValue(hash).index[0] = 0;
        RobotEntity robot(sample::Build(mechanism, hash).get());
        for (std::size_t i = 0; i < limits.size(); ++i) {
            robot.GetLink(i)->limit = {limits[i].first - StopMargin, limits[i].second + StopMargin};
        }
        const auto torch = ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second;
        torch->Initial();
        if (withTorch) {
            robot.AssembleOtherModel(torch.get(), sample::Place(robot.GetEndLink(0)->linkHash, 0));
        }
        robot.GetWorkspace()->UpdateWorkspaceShape(0);
        record = robot.GetWorkspace()->GetRobotData();
        robot.DisassembleModel(torch.get());
    }

    /// How far robots stay off their stops.
    static constexpr double StopMargin = 3 * Degree;

    Json::Value json;
};

} // namespace arms
