#include <gmock/gmock.h>
#include <host/tools/gpHandle.h>
#include <host/workpiece/Workpiece.h>
#include <mechanism/BenchEntity.h>
#include <support/LogCapture.h>
#include <support/SampleMechanisms.h>
#include <support/Thrown.h>
#include <support/TrsfMatcher.h>

namespace {

// A few products of unit rotations over a metre.
constexpr double Mm = 1e-9;
constexpr double Entries = 1e-12;

Json::Value OnTheBase() {
    Json::Value place;
    place["link_hash"] = place["install_index"] = 0;
    return place;
}

class Workpieces : public testing::Test {
protected:
    const sample::Mechanism positioner = sample::Positioner();
    Workpiece first, second, third;
    BenchEntity bench{sample::Build(positioner, 31, "B1").get()};
};

TEST_F(Workpieces, TakeTheFirstFreePlaceAndThenANewOne) {
    bench.AddFlange(std::make_shared<Flange>(bench.GetLink(0), gp_Trsf()));
    EXPECT_EQ(bench.AddWorkpiece(&first), 0);
    EXPECT_EQ(bench.AddWorkpiece(&second), 1);
    bench.DisassembleModel(&first);
    bench.DeleteWorkpiece(&first);
    EXPECT_EQ(first.carrier, nullptr);
    EXPECT_EQ(bench.AddWorkpiece(&third), 0) << "the place that was given back";
    EXPECT_EQ(bench.AddWorkpiece(&first), 2) << "past the last";
    EXPECT_EQ(bench.GetFlangeByIndex(2)->linkHash, bench.GetPlacementLinkHash());
    EXPECT_EQ(bench.AddWorkpiece(&second), -1) << "twice";
    EXPECT_EQ(bench.AddWorkpiece(nullptr), -1);
    bench.Delete();
    EXPECT_EQ(second.carrier, nullptr);
    EXPECT_TRUE(bench.GetAllWorkpieces().empty());
}

TEST_F(Workpieces, LetGoByTheBenchAloneStillHangOnTheirPlace) {
    bench.AddWorkpiece(&first);
    first.SetAssembleTrsf(positioner.flange);
    bench.DeleteWorkpiece(&first);
    EXPECT_THAT(first.GetAssembleTrsf(), IsTrsf(gp_Trsf(), 0, 0));
    EXPECT_EQ(bench.AddWorkpiece(&first), 0) << "taken in again without a new assembly";
    bench.DeleteWorkpiece(&first);
    bench.AddFixMdl(sample::Block(gp_Trsf()));
    bench.UpdateLinkModelNames();
    EXPECT_EQ(first.carrier, &bench) << "the flanges say who is there";
    EXPECT_EQ(bench.GetFixMdls()[0]->GetName(), "工作台:B1 - 基座");
    EXPECT_EQ(bench.GetLink(1)->models[0]->GetName(), "工作台:B1 - 轴2");
    bench.DisassembleModel(&first);
    bench.Initial();
    EXPECT_FALSE(bench.IsContainWorkpiece(&first));
}

TEST_F(Workpieces, FollowTheFlangeAndTheDisplacementIsItsMotion) {
    const gp_Trsf base = sample::Frame({-50, 20, 10}, gp_Dir(1, 0, 1), gp_Dir(0, 1, 0));
    bench.SetRootMdlTrsf(base);
    bench.AddWorkpiece(&first);
    const std::vector<double> values = {0.7, -2.1};
    EXPECT_THAT(bench.KinematicForward(values, false),
                IsTrsf(base * positioner.MotionAt(values) * base.Inverted(), Mm, Entries));
    EXPECT_THAT(first.GetRootMdlTrsf(), IsTrsf(base * positioner.FlangeAt(values), Mm, Entries));
    EXPECT_THAT(bench.GetPlacementTrsf(), IsTrsf(base * positioner.flange, Mm, Entries)) << "at rest";
    bench.DisassembleModel(&first);
    EXPECT_THAT(bench.KinematicForward({0, 0}, true), IsTrsf(gp_Trsf(), Mm, Entries));
    EXPECT_THAT(first.GetParentAssembleTrsf(), IsTrsf(base * positioner.FlangeAt(values), Mm, Entries));
}

TEST_F(Workpieces, StandOnTheBaseOfABenchWithoutAxesUnlessTheyCarryIt) {
    BenchEntity table;
    table.Initial();
    EXPECT_EQ(table.GetPlacementLinkHash(), 0U);
    EXPECT_EQ(table.AddWorkpiece(&first), 0);
    second.AddFlange(std::make_shared<Flange>());
    second.AssembleOtherModel(&table, OnTheBase());
    EXPECT_THROW(table.AddWorkpiece(&second), std::invalid_argument);
    EXPECT_EQ(second.carrier, nullptr);
    EXPECT_FALSE(table.IsContainWorkpiece(&second));
}

TEST_F(Workpieces, LeaveTableAndSystemsToTheData) {
    bench.GetLink(1)->SetCenterTrsf(gpHandle::EulerToTrsf(LocEuler({1, 2, 3}, {0, 0.2, 0})));
    bench.Initial();
    ASSERT_EQ(bench.GetBenchDH().size(), 4U);
    EXPECT_THAT(bench.GetBenchDH()[2], testing::ElementsAre(1, 2, 3, 0));
    EXPECT_NEAR(bench.GetBenchDH()[3][1], 0.2, Entries);
    EXPECT_FALSE(bench.DataToJson("").isMember("WorkbenchSystem"));
    bench.AddSystem(9);
    bench.AddSystem(4);
    EXPECT_EQ(bench.DataToJson("")["WorkbenchSystem"][0].asUInt64(), 4U);
}

TEST_F(Workpieces, AreReleasedByABenchOfTwoChainsWhichIsRefused) {
    const auto forked = sample::Build(positioner, 5);
    Json::Value root = forked->LinkToJson(forked->GetLink(0));
    root["link_hash"] = 7;
    forked->UpdateLinkRodPara(root, false);
    forked->AssembleOtherModel(&first, OnTheBase());
    LogCapture log;
    EXPECT_THAT(Thrown([&] { const BenchEntity refused(forked.get()); }),
                testing::EndsWith("BenchEntity::UpdateDH变位机结构错误：不支持多条运动链"));
    EXPECT_EQ(first.carrier, nullptr);
    EXPECT_EQ(log.Records().at(0).level, spdlog::level::critical);
    EXPECT_EQ(log.Records()[0].function, "BenchEntity::UpdateDH");
    EXPECT_EQ(log.Records()[0].file, "entity/mechanism/source/BenchEntity");
}

} // namespace
