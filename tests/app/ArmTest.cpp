#include "Documents.h"

#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <cell/ArmBuilder.h>
#include <cell/ArmShapes.h>
#include <cell/JointValues.h>
#include <cell/Solids.h>
#include <functional>
#include <gtest/gtest.h>
#include <host/tools/Rigid.h>
#include <host/tools/gpHandle.h>
#include <random>
#include <support/TrsfMatcher.h>

using namespace cell;

namespace {

// The descriptions are rounded to 1e-6 mm and nine digits; chains of a few metres carry that to here.
constexpr double PositionTolerance = 1e-5; // mm
constexpr double RotationTolerance = 1e-8;
constexpr double TableTolerance = 1e-9;  // mm, rad
constexpr double DegreeTolerance = 1e-9; // degrees

/// What a robot goes through between being built and being asked.
struct Treatment {
    const char* name;
    std::function<void(RobotEntity&)> apply;
};

void SaveAndLoad(RobotEntity& robot) {
    const std::string text = ToText(robot.ToJson(""));
    Json::Value json;
    std::string problems;
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    ASSERT_TRUE(reader->parse(text.data(), text.data() + text.size(), &json, &problems)) << problems;
    robot.LoadFromJson(json);
}

void Rename(RobotEntity& robot) {
    robot.SetName("renamed");
    robot.UpdateLinkModelNames();
    ASSERT_NE(robot.GetLink(0)->models.front()->GetName().find("renamed"), std::string::npos);
}

const std::vector<Treatment>& Treatments() {
    static const std::vector<Treatment> treatments = {
        {"built", [](RobotEntity&) {}}, {"reloaded", SaveAndLoad}, {"renamed", Rename}};
    return treatments;
}

class ArmTest : public testing::TestWithParam<std::tuple<const char*, std::size_t>> {
protected:
    void SetUp() override {
        Treatments()[std::get<1>(GetParam())].apply(*robot);
        ASSERT_FALSE(HasFatalFailure());
    }

    const JsonNode node = JsonNode::Load(Example("arms") / (std::string(std::get<0>(GetParam())) + ".json"));
    const ArmDescription arm = ReadArm(node);
    const std::unique_ptr<RobotEntity> robot = BuildArm(arm, arm.name, HashOfName(arm.name));
};

gp_Pnt Centroid(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    return properties.CentreOfMass();
}

/// Where each joint takes its link: turns about the axes of the description, one after the other.
std::vector<gp_Trsf> LinkMotions(const ArmDescription& arm, const std::vector<double>& values) {
    std::vector<gp_Trsf> motions;
    gp_Trsf motion;
    for (std::size_t i = 0; i < values.size(); ++i) {
        gp_Trsf turn;
        turn.SetRotation(gp_Ax1(Point(arm.joints[i].origin), Direction(arm.joints[i].axis)), values[i]);
        motions.push_back(motion = motion * turn);
    }
    return motions;
}

std::vector<double> RandomValues(const ArmDescription& arm, std::mt19937& random) {
    std::vector<double> values;
    for (const ArmJoint& joint : arm.joints) {
        values.push_back(std::uniform_real_distribution(joint.minDeg, joint.maxDeg)(random) *
                         RadiansPerDegree);
    }
    if (arm.coupled) {
        values[5] = -values[4];
    }
    return values;
}

/// The last row's offset is read along the robot's X, also where the last axis is a little off it, as in the
/// rounded data of a coupled wrist: every reading then shortens it by the cosine of that angle.
double TableSlack(const ArmDescription& arm, std::size_t row, double entry) {
    const bool read = arm.coupled && row + 1 == arm.joints.size();
    return TableTolerance + (read ? std::abs(entry) * (1 - arm.joints.back().axis[0]) : 0.0);
}

} // namespace

TEST_P(ArmTest, FlangeStandsWhereAnIndependentSolverPutsIt) {
    for (const JsonNode& sample : node.At("samples").Items("samples")) {
        SCOPED_TRACE(sample.Path());
        MoveTo(*robot,
               FullValues(*robot, sample.At("q_deg").Numbers(), [](const auto& shown, const auto& expected) {
                   throw std::runtime_error(shown + ", expected " + expected);
               }));
        const gp_Trsf flange = robot->GetCurrentTrsfTool0();
        const gp_Pnt origin = Point(sample.At("flange_origin_mm").Triple());
        const auto rows = sample.At("flange_rotation").Items("rows");
        Rigid solved{.r = {}, .p = {origin.X(), origin.Y(), origin.Z()}};
        for (std::size_t row = 0; row < 3; ++row) {
            const Triple numbers = rows[row].Triple();
            std::copy(numbers.begin(), numbers.end(), solved.r + 3 * row);
        }
        EXPECT_THAT(flange, IsTrsf(solved.ToTrsf(), PositionTolerance, RotationTolerance));
        // The tool centre: flange, tool, offset, in this order.
        const gp_Trsf tool = gpHandle::EulerToTrsf(LocEuler({40, -15, 250}, {0.2, -0.4, 1.1}));
        const gp_Trsf offset = gpHandle::EulerToTrsf(LocEuler({0, 0, 12}, {}));
        robot->SetTools({tool});
        robot->SetZOffset(12);
        EXPECT_THAT(robot->GetCurrentTrsfTCP(),
                    IsTrsf(solved.ToTrsf() * tool * offset, PositionTolerance, 2 * RotationTolerance));
    }
}

TEST_P(ArmTest, AxesAndLimitsAreTheDescriptions) {
    robot->Reset();
    const auto limits = robot->GetLimit(robot->GetRobotSystem(), 0);
    ASSERT_EQ(limits.size(), arm.joints.size());
    for (std::size_t i = 0; i < limits.size(); ++i) {
        SCOPED_TRACE("joint " + std::to_string(i + 1));
        const ArmJoint& joint = arm.joints[i];
        const LinkRod& link = *robot->GetLink(i);
        const gp_Ax1 axis = link.axis.Transformed(link.worldTrsf);
        EXPECT_LE(axis.Direction().XYZ().Subtracted(Direction(joint.axis).XYZ()).Modulus(),
                  RotationTolerance);
        EXPECT_LE(axis.Location().Distance(Point(joint.origin)), PositionTolerance);
        EXPECT_NEAR(limits[i].first / RadiansPerDegree, joint.minDeg, DegreeTolerance);
        EXPECT_NEAR(limits[i].second / RadiansPerDegree, joint.maxDeg, DegreeTolerance);
    }
    const gp_Trsf lastRow = robot->GetEndLink(0)->worldTrsf;
    EXPECT_NEAR(lastRow.Inverted().Multiplied(robot->GetCurrentTrsfTool0()).TranslationPart().Z(), 0,
                PositionTolerance)
        << "the table stops short of the flange";
}

TEST_P(ArmTest, TableOfTheNormalisedArmIsItsTable) {
    const auto table = robot->GetArmDH();
    const auto again = RobotEntity::GetArmDH1989(robot.get());
    ASSERT_EQ(table.size(), arm.joints.size());
    ASSERT_EQ(again.size(), table.size());
    for (std::size_t row = 0; row < table.size(); ++row) {
        for (std::size_t i = 0; i < table[row].size(); ++i) {
            EXPECT_NEAR(again[row][i], table[row][i], TableSlack(arm, row, table[row][i]))
                << "row " << row << ", entry " << i;
        }
    }
}

TEST_P(ArmTest, BodiesGoWhereTheJointsTakeThem) {
    const Bodies bodies = ShapeArm(arm);
    std::mt19937 random(20240607);
    for (int round = 0; round < 3; ++round) {
        const std::vector<double> values = RandomValues(arm, random);
        const std::vector<gp_Trsf> motions = LinkMotions(arm, values);
        MoveTo(*robot, values);
        for (std::size_t i = 0; i < bodies.links.size(); ++i) {
            const auto& models = robot->GetLink(i)->models;
            ASSERT_EQ(models.size(), bodies.links[i].size());
            for (std::size_t k = 0; k < models.size(); ++k) {
                const gp_Pnt expected = Centroid(bodies.links[i][k].shape).Transformed(motions[i]);
                const gp_Pnt actual = Centroid(models[k]->Shape()).Transformed(models[k]->Transformation());
                EXPECT_LE(actual.Distance(expected), PositionTolerance) << "link " << i << ", body " << k;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Arms, ArmTest,
                         testing::Combine(testing::Values("abb_irb2400_10", "abb_irb5400_paint",
                                                          "kuka_kr16_2", "motoman_ma2010", "staubli_tx90",
                                                          "ur_ur10e"),
                                          testing::Values(0, 1, 2)),
                         [](const auto& entry) {
                             return std::string(std::get<0>(entry.param)) + "_" +
                                    Treatments()[std::get<1>(entry.param)].name;
                         });

TEST(CoupledArm, TakesItsIndependentValuesAlone) {
    const ArmDescription arm = ReadArm(JsonNode::Load(Example("arms/abb_irb5400_paint.json")));
    const auto robot = BuildArm(arm, arm.name, HashOfName(arm.name));
    const auto refuse = [](const std::string& shown, const std::string&) { throw std::runtime_error(shown); };
    EXPECT_EQ(FullValues(*robot, {1, 2, 3, 4, 5, 7}, refuse),
              FullValues(*robot, {1, 2, 3, 4, 5, -5, 7}, refuse));
    EXPECT_THROW(FullValues(*robot, {1, 2, 3, 4, 5, -5.00001, 7}, refuse), std::runtime_error);
    EXPECT_THROW(FullValues(*robot, {1, 2, 3, 4, 5}, refuse), std::runtime_error);
}
