#include "Documents.h"

#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <cell/bodies/ArmShapes.h>
#include <cell/bodies/CarrierShapes.h>
#include <cell/bodies/Solids.h>
#include <cell/model/ArmBuilder.h>
#include <cell/model/JointValues.h>
#include <cell/model/Kinds.h>
#include <cell/text/Units.h>
#include <host/tools/ShapeHandle.h>
#include <support/TrsfMatcher.h>

using namespace cell;

namespace {

// The descriptions are rounded to 1e-6 mm and nine digits; chains of a few metres carry that to here.
constexpr double PositionTolerance = 1e-5; // mm
constexpr double RotationTolerance = 1e-8;
constexpr double UnitTolerance = 1e-9; // degrees, mm

/// Arms and carriers, each built from its description.
class Described : public testing::TestWithParam<const char*> {
protected:
    double UnitOf(std::size_t joint) const {
        return entity->GetLink(joint)->jointType == JointLinear ? 1.0 : RadiansPerDegree;
    }

    const Folder folder;
    const JsonNode node = JsonNode::Load(Example("arms") / (GetParam() + std::string(".json")));
    const std::string kind = node.At("kind").Text();
    const bool isArm = kind == "robot";
    const std::vector<JsonNode> joints = node.At("joints").Items("joints");
    const Bodies bodies = isArm ? ShapeArm(ReadArm(node)) : ShapeCarrier(ReadCarrier(node, kind));
    const std::shared_ptr<GenericEntityConfig> entity = [this] {
        Json::Value item;
        item["structure"] = node.Value();
        return MechanismKinds().at(kind)(JsonNode::Load(folder.WriteJson("item.json", item)), "described", 5);
    }();
};

gp_Trsf FlangeOf(const JsonNode& sample) {
    const Triple origin = sample.At("flange_origin_mm").Triple();
    const auto rows = sample.At("flange_rotation").Items("rows");
    Rigid flange{.r = {}, .p = {origin[0], origin[1], origin[2]}};
    for (std::size_t row = 0; row < 3; ++row) {
        std::ranges::copy(rows[row].Triple(), flange.r + 3 * row);
    }
    return flange.ToTrsf();
}

gp_Pnt Centroid(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    return properties.CentreOfMass();
}

TEST_P(Described, FlangeStandsWhereAnIndependentSolverPutsIt) {
    for (const JsonNode& sample : node.At("samples").Items("samples")) {
        SCOPED_TRACE(sample.Path());
        std::vector<double> values = sample.At(isArm ? "q_deg" : "values").Numbers();
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] *= UnitOf(i);
        }
        ASSERT_TRUE(entity->ForwardTrsfWithValue(values, true, true));
        EXPECT_THAT(entity->GetCurrentTrsfTool0(),
                    IsTrsf(FlangeOf(sample), PositionTolerance, RotationTolerance));
    }
}

TEST_P(Described, AxesAndLimitsAreTheDescriptions) {
    const auto limits = entity->GetLimit(5, 0);
    ASSERT_EQ(limits.size(), joints.size());
    for (std::size_t i = 0; i < joints.size(); ++i) {
        SCOPED_TRACE(joints[i].Path());
        const LinkRod& link = *entity->GetLink(i);
        const gp_Ax1 axis = link.axis.Transformed(link.worldTrsf);
        EXPECT_TRUE(axis.Direction().IsEqual(Direction(joints[i].At("axis").Triple()), RotationTolerance));
        EXPECT_LE(axis.Location().Distance(Point(joints[i].At("origin_mm").Triple())), PositionTolerance);
        const std::string unit = link.jointType == JointLinear ? "mm" : "deg";
        EXPECT_NEAR(limits[i].first / UnitOf(i), joints[i].At("min_" + unit).Number(), UnitTolerance);
        EXPECT_NEAR(limits[i].second / UnitOf(i), joints[i].At("max_" + unit).Number(), UnitTolerance);
    }
    if (isArm) {
        const gp_Trsf inLastRow = entity->GetEndLink(0)->worldTrsf.Inverted() * entity->GetCurrentTrsfTool0();
        EXPECT_LE(inLastRow.TranslationPart().Modulus(), PositionTolerance);
        EXPECT_NEAR(inLastRow.Value(3, 3), 1, RotationTolerance)
            << "the reach is that of a tool in the last row's frame";
    }
}

TEST_P(Described, BodiesAreSoundAndHangWhereTheyWereShaped) {
    ASSERT_EQ(bodies.links.size(), joints.size());
    Bnd_Box all;
    for (std::size_t i = 0; i < joints.size(); ++i) {
        SCOPED_TRACE(joints[i].Path());
        const auto& models = entity->GetLink(i)->models;
        ASSERT_FALSE(models.empty());
        ASSERT_EQ(models.size(), bodies.links[i].size());
        Bnd_Box box;
        for (std::size_t k = 0; k < models.size(); ++k) {
            const TopoDS_Shape& shape = bodies.links[i][k].shape;
            EXPECT_TRUE(BRepCheck_Analyzer(shape).IsValid());
            for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
                EXPECT_GT(ShapeHandle::GetAreaOrVol(solid.Current()), 0);
            }
            const gp_Pnt hangs = Centroid(models[k]->Shape()).Transformed(models[k]->Transformation());
            EXPECT_LE(hangs.Distance(Centroid(shape)), PositionTolerance);
            BRepBndLib::AddOptimal(shape, box, false);
        }
        EXPECT_FALSE(isArm && i + 1 < joints.size() &&
                     box.IsOut(Point(joints[i + 1].At("origin_mm").Triple())))
            << "a gap before the next joint";
        all.Add(box);
    }
    for (const Body& body : bodies.base) {
        EXPECT_TRUE(BRepCheck_Analyzer(body.shape).IsValid());
        BRepBndLib::AddOptimal(body.shape, all, false);
    }
    EXPECT_NEAR(all.CornerMin().Z(), 0, isArm ? INFINITY : PositionTolerance) << "off the floor";
}

INSTANTIATE_TEST_SUITE_P(Examples, Described,
                         testing::Values("abb_irb2400_10", "abb_irb5400_paint", "kuka_kr16_2",
                                         "motoman_ma2010", "staubli_tx90", "ur_ur10e", "gudel_tmf2_rail_10m",
                                         "motoman_motopos_d500", "abb_irbpa250_d1000_twc"),
                         [](const auto& entry) { return std::string(entry.param); });

} // namespace

TEST(CoupledArm, TakesItsIndependentValuesAlone) {
    const ArmDescription arm = ReadArm(JsonNode::Load(Example("arms/abb_irb5400_paint.json")));
    const auto robot = BuildArm(arm, arm.name, HashOfName(arm.name));
    const auto refuse = [](const std::string& shown, const std::string&) { throw shown; };
    EXPECT_EQ(FullValues(*robot, {1, 2, 3, 4, 5, 7}, refuse),
              FullValues(*robot, {1, 2, 3, 4, 5, -5, 7}, refuse));
    EXPECT_EQ(Thrown([&] { FullValues(*robot, {1, 2, 3, 4, 5, -5.00001, 7}, refuse); }), "-5.00001");
    EXPECT_EQ(Thrown([&] { FullValues(*robot, {1, 2, 3, 4, 5}, refuse); }), "5 values");
}
