#include <cell/model/LineMotion.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <cmath>
#include <gp_Quaternion.hxx>
#include <host/tools/gpHandle.h>
#include <mechanism/InterpHandle.h>
#include <optional>
#include <planning/PoseFollower.h>

namespace cell {

namespace {

/// Largest turn of the tool between two states.
constexpr double LargestTurn = 5 * RadiansPerDegree;
/// A line ends at the values of its key state to this much (rad), or in another configuration.
constexpr double SameValues = 1e-4;

planning::CarriedArm ArmOf(const JsonNode& item, const System& system) {
    try {
        return planning::CarriedArm(*system.robot);
    } catch (const std::invalid_argument& error) {
        item.Refuse(error.what(), "an arm whose poses can be solved for joint values");
    }
}

class Line {
public:
    Line(const JsonNode& item_, const System& system, GrpState from_, GrpState to_)
        : item(item_), from(std::move(from_)), to(std::move(to_)),
          start(gpHandle::EulerToTrsf(from.GetLocEuler(0))), end(gpHandle::EulerToTrsf(to.GetLocEuler(0))),
          arm(ArmOf(item, system)), follower(arm, way, from.GetValues(Robot)) {}

    /// Values at a part of the line; parts ascend.
    const std::vector<double>& ValuesAt(double part) {
        if (!follower.Follow(part)) {
            Refuse(follower.Why().t, follower.Why().Text());
        }
        return follower.Values();
    }
    void RequireEnd() {
        const std::vector<double> reached = ValuesAt(1);
        const std::vector<double> wanted = to.GetValues(Robot);
        for (std::size_t i = 0; i < reached.size(); ++i) {
            if (!(std::abs(reached[i] - wanted[i]) <= SameValues)) {
                Refuse(1, "change of configuration: joint " + std::to_string(i + 1) + " arrives at " +
                              Rounded(reached[i] / RadiansPerDegree, 1) + " deg, not " +
                              Rounded(wanted[i] / RadiansPerDegree, 1) + ",");
            }
        }
    }

private:
    [[noreturn]] void Refuse(double part, const std::string& why) const {
        const double length = from.GetLocEuler(0).location.Distance(to.GetLocEuler(0).location);
        item.Refuse(why + " at " + Rounded(part * length, 1) + " of " + Rounded(length, 1) + " mm",
                    "key states with a straight line between them that the arm can follow");
    }
    std::vector<double> CarrierAt(double part) const {
        return InterpHandle::InterpolationScalePts(from, to, part).GetValues(Pedestal);
    }

    const JsonNode& item;
    GrpState from;
    GrpState to;
    gp_Trsf start;
    gp_Trsf end;
    planning::CarriedArm arm;
    planning::ToolWay way = {
        [this](double part) { return Rigid::From(InterpHandle::InterpolationScaleTrsf(start, end, part)); },
        [this](double part) { return CarrierAt(part); }};
    planning::PoseFollower follower;
};

} // namespace

void SolveLeg(const JsonNode& item, const System& system, std::vector<GrpState>& leg) {
    Line line(item, system, leg.front(), leg.back());
    const double parts = static_cast<double>(leg.size()) - 1;
    for (std::size_t k = 1; k + 1 < leg.size(); ++k) {
        leg[k].SetValues(Robot, line.ValuesAt(static_cast<double>(k) / parts));
    }
    line.RequireEnd();
}

std::vector<GrpState> FillLine(const JsonNode& item, const System& system, const GrpState& from,
                               const GrpState& to, double spacing) {
    const LocEuler& first = from.GetLocEuler(0);
    const LocEuler& last = to.GetLocEuler(0);
    const gp_Trsf start = gpHandle::EulerToTrsf(first);
    const gp_Trsf end = gpHandle::EulerToTrsf(last);
    const gp_Quaternion turn = start.GetRotation().Inverted() * end.GetRotation();
    const double angle = 2 * std::atan2(gp_Vec(turn.X(), turn.Y(), turn.Z()).Magnitude(), std::abs(turn.W()));
    const double parts =
        std::ceil(std::max({first.location.Distance(last.location) / spacing, angle / LargestTurn, 1.0}));
    std::vector<GrpState> leg = {from};
    for (int k = 1; k < parts; ++k) {
        GrpState& state = leg.emplace_back(InterpHandle::InterpolationScalePts(from, to, k / parts));
        state.SetLocEuler(0,
                          gpHandle::TrsfToEuler(InterpHandle::InterpolationScaleTrsf(start, end, k / parts)));
    }
    leg.push_back(to);
    SolveLeg(item, system, leg);
    return leg;
}

} // namespace cell
