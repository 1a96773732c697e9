#include "Documents.h"

#include <cell/Planner.h>
#include <gp_Lin.hxx>

using namespace cell;

namespace {

/// The example cell with one motion of kind "linear" between two sets of values.
Json::Value LineCell(const std::string& from, const std::string& to) {
    Json::Value json = ExampleCell("arc_welding.json");
    json["key_states"] = Parsed(R"({"a": {"robot": "welder", "values_deg": [)" + from +
                                R"(]}, "b": {"robot": "welder", "values_deg": [)" + to + "]}}");
    json["motions"] =
        Parsed(R"([{"name": "line", "kind": "linear", "spacing_mm": 10, "states": ["a", "b"]}])");
    return json;
}

struct PlannedLine {
    std::vector<GrpState> states;
    std::string report; ///< why there are none
};

PlannedLine PlanLine(const Json::Value& json) {
    const Folder folder;
    const Cell cell = Cell::Load(folder.WriteJson("cell.json", json));
    PlannedLine planned;
    planned.report =
        Thrown([&] { planned.states = PlanMotions(cell, [](std::size_t, std::size_t) {})[0].states; });
    return planned;
}

struct Case {
    const char* from;
    const char* to;
    const char* report;
};

} // namespace

TEST(Line, KeepsTheToolCentreOnAStraightWayWithinItsSpacing) {
    const PlannedLine planned = PlanLine(LineCell("-20, 10, 30, 10, -40, 5", "25, 5, 35, -5, -30, -10"));
    ASSERT_EQ(planned.report, "");
    ASSERT_GT(planned.states.size(), 20U);
    const gp_Pnt first = planned.states.front().GetLocEuler(0).location;
    const gp_Pnt last = planned.states.back().GetLocEuler(0).location;
    const gp_Lin line(first, gp_Dir(last.XYZ() - first.XYZ()));
    gp_Pnt before = first;
    for (const GrpState& state : planned.states) {
        EXPECT_LE(line.Distance(state.GetLocEuler(0).location), 1e-9);
        EXPECT_LE(before.Distance(state.GetLocEuler(0).location), 10.0 + 1e-9);
        before = state.GetLocEuler(0).location;
    }
}

TEST(Line, ThatCannotBeKeptIsRefusedWithWhereAndWhy) {
    const Case cases[] = {
        {"-110, 60, 0, 0, 20, 0", "110, 60, 0, 0, 20, 0", "limit of joint 3 at 887"},
        {"-60, 70, -55, 0, 10, 0", "60, 70, -55, 0, 10, 0", "singularity at 70 of"},
        {"0, 10, 30, 0, -40, 0", "0, 10, 30, 180, 40, 180",
         "change of configuration: joint 4 arrives at 0 deg"},
        {"-20, 10, 30, 10, -40, 5", "-20, 10, 30, 10, -40, 5", ""},
    };
    for (const Case& line : cases) {
        const PlannedLine planned = PlanLine(LineCell(line.from, line.to));
        EXPECT_THAT(planned.report, testing::HasSubstr(line.report)) << line.from;
        EXPECT_EQ(planned.report.empty(), std::string(line.report).empty()) << line.from;
    }
}
