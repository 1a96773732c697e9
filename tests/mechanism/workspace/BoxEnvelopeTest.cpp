#include "Cell.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <cmath>
#include <support/TrsfMatcher.h>

namespace {

// Boxes are exact; Open CASCADE's Booleans and bounding boxes add their tolerance of 1e-7.
constexpr double VolumeShare = 1e-6;
constexpr double Mm = 1e-3;

const Registrar::Layout WithRail{.pedestal = 1};
const Registrar::Layout TooFewValues{.pedestal = 5, .robots = 0};

struct Extent {
    gp_Pnt low, high;
    explicit Extent(const TopoDS_Shape& shape) {
        Bnd_Box bounds;
        BRepBndLib::AddOptimal(shape, bounds, false, false);
        low = bounds.CornerMin();
        high = bounds.CornerMax();
    }
    double Volume() const { return (high.X() - low.X()) * (high.Y() - low.Y()) * (high.Z() - low.Z()); }
};

// Of the untrimmed box of an upright robot at the origin.
Extent Untrimmed() {
    Cell cell(WithRail);
    cell.Mount({}, gp_Trsf());
    cell.workspace.UpdateWorkspaceShape(0);
    return Extent(cell.Solids().front());
}

TopoDS_Shape Block(const gp_Pnt& low, const gp_Pnt& high) { return BRepPrimAPI_MakeBox(low, high).Shape(); }

TEST(BoxEnvelope, UprightRobotsBoxIsMirroredThroughItsBase) {
    Cell cell(WithRail);
    gp_Trsf place;
    place.SetTranslation(gp_Vec(300, 2000, 0));
    cell.Mount({}, place);
    cell.workspace.UpdateWorkspaceShape(0);
    const auto solids = cell.Solids();
    ASSERT_EQ(solids.size(), 2U);
    const Extent own(solids[0]);
    const Extent other(solids[1]);
    EXPECT_GE(own.low.Y(), 2000);
    EXPECT_NEAR(own.low.Y() + other.high.Y(), 4000, Mm);
    EXPECT_NEAR(own.high.Y() + other.low.Y(), 4000, Mm);
    EXPECT_NEAR(own.low.X(), other.low.X(), Mm);
    EXPECT_FALSE(cell.workspace.GetRailState());
    const TopoDS_Shape first = cell.Shown();
    cell.workspace.UpdateWorkspaceShape(0);
    EXPECT_TRUE(cell.Shown().IsEqual(first));
}

TEST(BoxEnvelope, AfterARevolvedEnvelopeIsInTheWorldFrame) {
    Cell cell;
    cell.robot.SetRootMdlTrsf(sample::Frame({500, 0, 100}, gp_Dir(0, 0, 1), gp_Dir(0, 1, 0)));
    cell.workspace.UpdateWorkspaceShape(0);
    const Registrar withRail(Cell::Hash, WithRail);
    cell.workspace.UpdateWorkspaceShape(0);
    EXPECT_TRUE(cell.workspace.GetRobotData().systemType == PedestalTypeAdditional);
    EXPECT_THAT(cell.workspace.GetDisplayShape()->LocalTransformation(), IsTrsf(gp_Trsf(), 0, 0));
}

// The envelope of a hanging arm, scaled so that its box has this width.
TopoDS_Shape HangingEnvelope(double width) {
    Cell cell(WithRail);
    cell.Mount({}, Cell::Hanging(3000));
    cell.workspace.UpdateWorkspaceShape(0);
    EXPECT_TRUE(cell.workspace.GetRailState());
    const auto box = WorkSpace::GetInvertedRobotWorkSpace(cell.workspace.GetRobotData());
    const double scale = width / std::min(box[3] - box[0], box[4] - box[1]);
    sample::Mechanism arm = sample::SixAxisArm();
    for (gp_Ax1& axis : arm.axes) {
        axis.SetLocation(gp_Pnt(axis.Location().XYZ() * scale));
    }
    arm.flange.SetTranslationPart(gp_Vec(arm.flange.TranslationPart() * scale));
    RobotEntity robot(sample::Build(arm, Cell::Hash).get());
    cell.carrier.DisassembleModel(&cell.robot);
    cell.Carry(robot);
    robot.GetWorkspace()->UpdateWorkspaceShape(0);
    return robot.GetWorkspace()->GetDisplayShape()->Shape();
}

TEST(BoxEnvelope, HangingRobotsBoxIsRoundedFrom1210Millimetres) {
    const TopoDS_Shape narrow = HangingEnvelope(1200);
    const TopoDS_Shape rounded = HangingEnvelope(1210.001);
    for (const auto& [shape, corners] :
         {std::pair{narrow, 0.0}, {rounded, (4 - std::numbers::pi) * 600 * 600}}) {
        EXPECT_EQ(Cell::SolidsOf(shape).size(), 1U);
        const Extent extent(shape);
        const double cut = corners * (extent.high.Z() - extent.low.Z());
        EXPECT_NEAR(ShapeHandle::GetAreaOrVol(shape) / (extent.Volume() - cut), 1, VolumeShare);
    }
}

TEST(BoxEnvelope, ReducedSystemsBoxIsTrimmedAlongX) {
    const Extent whole = Untrimmed();
    Cell cell(TooFewValues);
    const double edge = whole.low.X() + 150;
    cell.Mount(Block({whole.low.X() - 50, -10, whole.low.Z() - 10}, {edge, 10, whole.high.Z()}), gp_Trsf());
    cell.workspace.SetManagerNum(2);
    cell.workspace.UpdateWorkspaceShape(0);
    const auto solids = cell.Solids();
    ASSERT_EQ(solids.size(), 1U) << "never mirrored";
    EXPECT_TRUE(cell.workspace.GetRailState());
    EXPECT_NEAR(Extent(solids[0]).low.X(), edge + 100, Mm);
    EXPECT_NEAR(Extent(solids[0]).high.Y(), whole.high.Y(), Mm);
}

// The first cut may remove at most half of the box; the part below the carrier is always removed.
class Trim : public testing::TestWithParam<double> {};

TEST_P(Trim, CutToHalfOrLessIsDiscardedButTheFloorCutApplies) {
    const Extent whole = Untrimmed();
    const double left = GetParam();
    const double edge = whole.high.Y() - left * (whole.high.Y() - whole.low.Y());
    const double floor = whole.low.Z() + 40;
    Cell cell(WithRail);
    cell.Mount(Block({-10, -50, floor}, {10, edge - 100, floor + 20}), gp_Trsf());
    cell.workspace.UpdateWorkspaceShape(0);
    const Extent trimmed(cell.Solids().front());
    EXPECT_NEAR(trimmed.low.Y(), left > 0.5 ? edge : whole.low.Y(), Mm);
    EXPECT_NEAR(trimmed.low.Z(), floor, Mm);
    EXPECT_NEAR(trimmed.high.Z(), whole.high.Z(), Mm);

    const auto [bottom, second] = cell.workspace.GetBottomFace(true);
    EXPECT_NEAR(ShapeHandle::GetFaceCenter(TopoDS::Face(bottom)).Z(), floor, Mm);
    // The sides' centres have equal heights: of those before the bottom face, one is returned second.
    if (!second.IsNull()) {
        EXPECT_NEAR(ShapeHandle::GetFaceCenter(TopoDS::Face(second)).Z(), (floor + whole.high.Z()) / 2, Mm);
    }
}

INSTANTIATE_TEST_SUITE_P(PartLeft, Trim, testing::Values(0.501, 0.499));

// A cut through the middle leaves two bodies with bottoms at equal heights.
TEST(BoxEnvelope, BoxDividedByTheCarrierHasTwoBottomFaces) {
    const Extent whole = Untrimmed();
    const double middle = (whole.low.Y() + whole.high.Y()) / 2;
    const double floor = whole.low.Z() + 40;
    Cell cell(WithRail);
    cell.Mount(Block({-10, middle - 10, floor}, {10, middle + 10, floor + 20}), gp_Trsf());
    EXPECT_TRUE(cell.workspace.GetBottomFace(true).first.IsNull()) << "nothing built yet";
    const auto [first, second] = cell.workspace.GetBottomFace(false);
    ASSERT_FALSE(second.IsNull());
    EXPECT_FALSE(first.IsSame(second));
    const gp_Pnt a = ShapeHandle::GetFaceCenter(TopoDS::Face(first));
    const gp_Pnt b = ShapeHandle::GetFaceCenter(TopoDS::Face(second));
    EXPECT_NEAR(a.Z(), floor, Mm);
    EXPECT_NEAR(b.Z(), floor, Mm);
    EXPECT_NEAR(a.Y() + b.Y(), 2 * middle, Mm);
}

} // namespace
