#include "Documents.h"

#include <cell/documents/JsonNode.h>
#include <cell/model/EdgeChain.h>
#include <cmath>
#include <gp_XYZ.hxx>

using namespace cell;

namespace {

constexpr double Exact = 1e-6;
constexpr double SectorFound = 1e-4; // of a direction: the open sector's borders are halved 14 times
const double Half = std::sqrt(0.5);

/// The bracket on its plate, with another path.
std::vector<ToolPose> PathWith(const char* changes) {
    Json::Value json = ExampleCell("fillet.json");
    Json::Value& path = json["motions"][0];
    json["motions"].resize(1);
    for (const char* key : {"trim_mm"}) {
        path.removeMember(key);
    }
    const Json::Value more = Parsed(changes);
    for (const std::string& key : more.getMemberNames()) {
        path[key] = more[key];
    }
    const Folder folder;
    return Cell::Load(folder.WriteJson("cell.json", json)).ToolPaths().front().poses;
}

gp_XYZ Point(const ToolPose& pose) { return {pose[0], pose[1], pose[2]}; }
gp_XYZ Tool(const ToolPose& pose) { return {pose[3], pose[4], pose[5]}; }

TEST(SeamPath, BetweenTwoSolidsPointsIntoTheOpenCorner) {
    const auto poses = PathWith("{}");
    // Clear of corners: half from the plate, half from the bracket's side.
    for (const ToolPose& pose : poses) {
        const bool front = pose[1] < -49.9 && std::abs(pose[0]) < 49;
        const bool left = pose[0] < -69.9 && std::abs(pose[1]) < 29;
        if (front || left) {
            const gp_XYZ wanted(left ? Half : 0, front ? Half : 0, -Half);
            EXPECT_LE((Tool(pose) - wanted).Modulus(), SectorFound);
        }
        EXPECT_NEAR(pose[2], 15, Exact);
    }
    for (std::size_t i = 1; i < poses.size(); ++i) {
        EXPECT_LE(Tool(poses[i]).Crossed(Tool(poses[i - 1])).Modulus(), 0.2) << "a corner taken at once";
        EXPECT_GT((Point(poses[i]) - Point(poses[i - 1])).Modulus(), 1);
    }
    EXPECT_NEAR((Point(poses.front()) - gp_XYZ(70, -50, 15)).Modulus(), 0, Exact);
    EXPECT_NEAR((Point(poses.back()) - gp_XYZ(70, 50, 15)).Modulus(), 0, Exact);
}

TEST(SeamPath, IsReversedTrimmedStartedElsewhereAndTurnedFromAFace) {
    const auto forward = PathWith("{}");
    const auto back = PathWith(R"({"reversed": true})");
    EXPECT_LE((Point(forward.front()) - Point(back.back())).Modulus(), Exact);
    const auto trimmed = PathWith(R"({"trim_mm": [20, 150]})");
    EXPECT_LE((Point(trimmed.front()) - gp_XYZ(50, -50, 15)).Modulus(), Exact);
    EXPECT_LE((Point(trimmed.back()) - gp_XYZ(-70, 40, 15)).Modulus(), Exact);
    const char* closed = R"({"edges": [{"near_mm": [0, -50, 15]}, {"near_mm": [-70, 0, 15]},
                             {"near_mm": [0, 50, 15]}, {"near_mm": [70, 0, 15]}], "start_mm": 70})";
    const auto around = PathWith(closed);
    EXPECT_LE((Point(around.front()) - gp_XYZ(0, -50, 15)).Modulus(), Exact);
    EXPECT_EQ(around.front(), around.back());
    const auto flat = PathWith(R"({"edges": [{"near_mm": [0, -50, 15]}],
                                   "torch": {"face_near_mm": [0, -100, 15], "angle_deg": 30}})");
    const gp_XYZ wanted(0, std::cos(std::numbers::pi / 6), -0.5);
    EXPECT_LE((Tool(flat[flat.size() / 2]) - wanted).Modulus(), Exact);
}

TEST(SeamPath, StrokesKeepTheirDistanceFromTheFaceAndRunOverItsEdge) {
    const Cell cell = Cell::Load(Example("cells/painting.json"));
    const auto& poses = cell.ToolPaths().front().poses;
    double farthest = 0;
    int turns = 0;
    for (std::size_t i = 0; i < poses.size(); ++i) {
        // The panel is part of a tube of radius 1500 about a line along Y through z = -1200.
        const gp_XYZ p = Point(poses[i]);
        const gp_XYZ radial(p.X(), 0, p.Z() + 1200);
        const bool lead = std::abs(p.Y()) > 500 + Exact;
        EXPECT_NEAR(radial.Modulus(), 1500 + 280, Exact);
        EXPECT_LE((Tool(poses[i]) + radial.Normalized()).Modulus(), Exact);
        farthest = std::max(farthest, std::abs(p.Y()));
        turns += lead && i > 0 && std::abs(Point(poses[i - 1]).X() - p.X()) > 1 ? 1 : 0;
    }
    EXPECT_NEAR(farthest, 580, 1e-3);
    EXPECT_EQ(turns, 6) << "seven strokes";
}

struct BadPath {
    const char* changes;
    const char* report;
};

TEST(SeamPath, ThatMakesNoSenseIsRefusedWithItsPlace) {
    const BadPath cases[] = {
        {R"({"edges": [{"near_mm": [0, -50, 15]}, {"near_mm": [0, 50, 15]}]})",
         "motions[0].edges[1]: {\"near_mm\":[0,50,15]}, expected an edge that begins or ends where"},
        {R"({"edges": [900]})", "motions[0].edges[0]: 900, expected the number of an edge, from 1 to 24"},
        {R"({"edges": ["rim"]})", "motions[0].edges[0]: \"rim\", expected"},
        {R"({"edges": []})", "motions[0].edges"},
        {R"({"spacing_mm": 500})", "motions[0].spacing_mm: 500, expected a spacing of at most the seam's"},
        {R"({"trim_mm": [300, 300]})", "motions[0].trim_mm: [300,300], expected two lengths, together less"},
        {R"({"start_mm": 5})", "motions[0].start_mm: 5, expected a length from 0 to that of a closed chain"},
        {R"({"torch": {"face_near_mm": [0, -100, 15], "angle_deg": 180}})", "torch.angle_deg: 180, expected"},
    };
    for (const BadPath& bad : cases) {
        EXPECT_THAT(Thrown([&] { PathWith(bad.changes); }), testing::HasSubstr(bad.report)) << bad.changes;
    }
}

} // namespace
