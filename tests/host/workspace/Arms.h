#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <host/tools/Rigid.h>
#include <host/tools/gpHandle.h>
#include <host/workspace/WorkSpace.h>
#include <json/json.h>
#include <mechanism/RobotEntity.h>
#include <ostream>
#include <support/Draws.h>
#include <support/SampleMechanisms.h>

/// The described arms, twice: as the record that the computation gets, and as joint axes in space, which know
/// nothing of tables.
namespace arms {

inline constexpr double Degree = std::numbers::pi / 180.0;

struct Case {
    std::string name;
    bool bentTorch;
    friend void PrintTo(const Case& c, std::ostream* out) {
        *out << c.name << (c.bentTorch ? " with a torch" : "");
    }
};

inline std::vector<Case> AllCases() {
    std::vector<Case> cases;
    for (const auto& file : std::filesystem::directory_iterator(ARMS_DIR)) {
        std::ifstream text(file.path());
        Json::Value json;
        text >> json;
        if (json["kind"] == "robot") {
            cases.push_back({file.path().stem(), false});
            cases.push_back({file.path().stem(), true});
        }
    }
    std::sort(cases.begin(), cases.end(), [](const Case& a, const Case& b) {
        return std::pair(a.name, a.bentTorch) < std::pair(b.name, b.bentTorch);
    });
    return cases;
}

inline std::string NameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.name + (info.param.bentTorch ? "_torch" : "");
}

struct Arm {
    sample::Mechanism mechanism;
    std::vector<std::pair<double, double>> limits;
    gp_Trsf tool;
    WorkSpace::Robot record;
    std::vector<Rigid> toJoint, fromJoint; // frames whose Z are the joint axes
    Rigid endWithTool;

    explicit Arm(const Case& which) {
        std::ifstream text(std::filesystem::path(ARMS_DIR) / (which.name + ".json"));
        text >> json;
        ReadJoints();
        if (which.bentTorch) {
            tool = gpHandle::EulerToTrsf(LocEuler({60, 15, 330}, {0, 22 * Degree, 0}));
        }
        FillRecord();
        for (const gp_Ax1& axis : mechanism.axes) {
            const gp_Trsf frame = gpHandle::Ax1ToTrsf(axis);
            toJoint.push_back(Rigid::From(frame));
            fromJoint.push_back(Rigid::From(frame.Inverted()));
        }
        endWithTool = Rigid::From(mechanism.flange * tool);
    }

    /// Tool centre at joint values, from the axes alone.
    gp_XYZ ToolCentre(const std::vector<double>& q) const {
        Rigid at;
        for (std::size_t i = 0; i < q.size(); ++i) {
            const double c = std::cos(q[i]);
            const double s = std::sin(q[i]);
            at = at * toJoint[i] * Rigid{{c, -s, 0, s, c, 0, 0, 0, 1}, {0, 0, 0}} * fromJoint[i];
        }
        at = at * endWithTool;
        return {at.p[0], at.p[1], at.p[2]};
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
    std::vector<double> Random(Draw& draw) const {
        std::vector<double> q;
        for (const auto& [low, high] : limits) {
            q.push_back(draw.Between(low, high));
        }
        return Within(q);
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
