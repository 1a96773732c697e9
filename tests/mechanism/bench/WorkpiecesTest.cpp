#include <host/workpiece/Workpiece.h>
#include <support/Mechanism.h>

namespace {

class Workpieces : public testing::Test {
protected:
    const sample::Mechanism positioner = sample::Positioner();
    Workpiece first, second, third;
    BenchEntity bench{sample::Build(positioner, 31, "B1").get()};
};

TEST_F(Workpieces, FirstFreeFlangeIsUsedThenANewOne) {
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

TEST_F(Workpieces, DeletedWorkpieceStaysMountedUntilDisassembled) {
    bench.AddWorkpiece(&first);
    first.SetAssembleTrsf(positioner.flange);
    bench.DeleteWorkpiece(&first);
    EXPECT_THAT(first.GetAssembleTrsf(), IsTrsf(gp_Trsf(), 0, 0));
    EXPECT_EQ(bench.AddWorkpiece(&first), 0) << "taken in again without a new assembly";
    bench.DeleteWorkpiece(&first);
    bench.UpdateLinkModelNames();
    EXPECT_EQ(first.carrier, &bench) << "the flanges say who is there";
    bench.DisassembleModel(&first);
    bench.Initial();
    EXPECT_FALSE(bench.IsContainWorkpiece(&first));
}

TEST_F(Workpieces, DestroyedBenchOrWorkpieceIsForgotten) {
    auto part = std::make_unique<Workpiece>();
    BenchEntity other(sample::Build(positioner, 32).get());
    bench.AddWorkpiece(part.get());
    other.AddWorkpiece(part.get());
    part.reset();
    EXPECT_TRUE(bench.GetAllWorkpieces().empty());
    EXPECT_TRUE(other.GetAllWorkpieces().empty());
    auto leaving = std::make_unique<BenchEntity>(sample::Build(positioner, 33).get());
    leaving->AddWorkpiece(&first);
    leaving->AddWorkpiece(&second);
    bench.AddWorkpiece(&second);
    leaving.reset();
    EXPECT_EQ(first.carrier, nullptr);
    EXPECT_EQ(second.carrier, &bench) << "which moved on before";
}

TEST_F(Workpieces, FollowTheFlangeAndItsDisplacement) {
    const gp_Trsf base = sample::Frame({-50, 20, 10}, gp_Dir(1, 0, 1), gp_Dir(0, 1, 0));
    bench.SetRootMdlTrsf(base);
    bench.AddWorkpiece(&first);
    const std::vector<double> values = {0.7, -2.1};
    EXPECT_THAT(bench.KinematicForward(values, false),
                IsTrsf(base * positioner.MotionAt(values) * base.Inverted()));
    EXPECT_THAT(first.GetRootMdlTrsf(), IsTrsf(base * positioner.FlangeAt(values)));
    EXPECT_THAT(bench.GetPlacementTrsf(), IsTrsf(base * positioner.flange)) << "at rest";
    bench.DisassembleModel(&first);
    EXPECT_THAT(bench.KinematicForward({0, 0}, true), IsTrsf(gp_Trsf()));
    EXPECT_THAT(first.GetParentAssembleTrsf(), IsTrsf(base * positioner.FlangeAt(values)));
}

TEST_F(Workpieces, BenchWithoutAxesMountsOnItsBase) {
    BenchEntity table;
    table.Initial();
    EXPECT_EQ(table.GetPlacementLinkHash(), 0U);
    sample::Mechanism turntable = positioner;
    turntable.axes.resize(1);
    const BenchEntity one(sample::Build(turntable, 32).get());
    EXPECT_EQ(one.GetPlacementLinkHash(), one.GetLink(0)->linkHash);
    EXPECT_EQ(table.AddWorkpiece(&first), 0);
    second.AddFlange(std::make_shared<Flange>());
    second.AssembleOtherModel(&table, sample::Place(0, 0));
    EXPECT_THROW(table.AddWorkpiece(&second), std::invalid_argument);
    EXPECT_EQ(second.carrier, nullptr);
    EXPECT_FALSE(table.IsContainWorkpiece(&second));
}

TEST_F(Workpieces, TableAndSystemsAreReported) {
    bench.GetLink(1)->SetCenterTrsf(gpHandle::EulerToTrsf(LocEuler({1, 2, 3}, {0, 0.2, 0})));
    bench.Initial();
    ASSERT_EQ(bench.GetBenchDH().size(), 4U);
    EXPECT_THAT(bench.GetBenchDH()[2], testing::ElementsAre(1, 2, 3, 0));
    EXPECT_NEAR(bench.GetBenchDH()[3][1], 0.2, 1e-12);
    EXPECT_FALSE(bench.DataToJson("").isMember("WorkbenchSystem"));
    bench.AddSystem(9);
    bench.AddSystem(4);
    EXPECT_EQ(bench.DataToJson("")["WorkbenchSystem"][0].asUInt64(), 4U);
}

TEST_F(Workpieces, RefusedBenchReleasesItsWorkpieces) {
    const auto forked = sample::Build(positioner, 5);
    Json::Value root = forked->LinkToJson(forked->GetLink(0));
    root["link_hash"] = 7;
    forked->UpdateLinkRodPara(root, false);
    forked->AssembleOtherModel(&first, sample::Place(0, 0));
    ExpectFailure([&] { const BenchEntity refused(forked.get()); }, "BenchEntity", "BenchEntity::UpdateDH",
                  "变位机结构错误：不支持多条运动链");
    EXPECT_EQ(first.carrier, nullptr);
}

} // namespace
