#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <host/tools/gpHandle.h>
#include <host/workspace/WorkSpace.h>
#include <json/json.h>
#include <mechanism/RobotEntity.h>
#include <support/Draws.h>
#include <support/SampleMechanisms.h>

/// The described arms, twice: as the record that the computation gets, and as joint axes in space, which know
/// nothing of tables.
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
            tool = gpHandle::EulerToTrsf(LocEuler({60, 15, 330}, {0, 22 * Degree, 0}));
        }
        FillRecord();
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

    std::vector<Pose> RandomPoses(int count, unsigned seed) const {
        Draw draw(seed);
        std::vector<Pose> poses;
        for (int i = 0; i < count; ++i) {
            std::vector<double> q;
            for (const auto& [low, high] : limits) {
                q.push_back(draw.Between(low, high));
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

    // The record ends at the last row's frame, so the last joint and the flange are put at one point of the
    // last axis, the flange looking along it: the same arm, described as the table can hold it.
    void ReadJoints() {
        for (const Json::Value& joint : json["joints"]) {
            mechanism.axes.emplace_back(Triple(joint["origin_mm"]), gp_Dir(Triple(joint["axis"])));
            limits.emplace_back(joint["min_deg"].asDouble() * Degree, joint["max_deg"].asDouble() * Degree);
        }
        const gp_Pnt flange(Triple(json["flange"]["origin_mm"]));
        mechanism.axes.back().SetLocation(flange);
        const gp_Dir along = mechanism.axes.back().Direction();
        mechanism.flange = sample::Frame(flange, along, gp_Ax2(flange, along).XDirection());
        mechanism.armStructure = json["arm_structure"].asInt();
        mechanism.coupled = json["coupled"].asBool();
    }

    void FillRecord() {
        const RobotEntity robot(sample::Build(mechanism, 4711).get());
        record.dh = robot.GetArmDH();
        for (std::size_t i = 0; i < limits.size(); ++i) {
            record.jointMin[i] = limits[i].first;
            record.jointMax[i] = limits[i].second;
        }
        for (int c = 0; c < 3; ++c) {
            record.toolOffset[c] = tool.TranslationPart().Coord(c + 1) / 1000;
        }
        record.armStructureCode = mechanism.armStructure;
    }

    Json::Value json;
};

} // namespace arms
