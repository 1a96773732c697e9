#include <support/Mechanism.h>

namespace {

class Painting : public testing::Test {
protected:
    Painting() {
        config.paintUpRadius = 10;
        config.paintDownRadius = 100;
        config.paintLength = 200;
        config.paintShown = true;
        tool->SetToolWorkType(ToolEntity::WorkTypePainting);
    }
    ~Painting() override { config.paintShown = false; }

    TopoDS_Shape Cone() const { return tool->GetPaintedMdl()->Shape(); }

    CADParamConfig& config = *CADParamConfig::GetInstance();
    std::shared_ptr<ToolEntity> tool =
        ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second;
};

TEST_F(Painting, ConeStandsAtTheToolCentreAndFollowsTheTool) {
    const gp_Trsf place = gpHandle::EulerToTrsf(LocEuler({100, 0, 50}, {0, 0.3, 0}));
    tool->SetRootMdlTrsf(place);
    tool->Initial();
    const auto cone = tool->GetPaintedMdl();
    ASSERT_FALSE(cone.IsNull());
    EXPECT_THAT(cone->Shape().Location().Transformation(), IsTrsf(tool->GetToolTrsf()));
    EXPECT_THAT(cone->Transformation(), IsTrsf(place)) << "the root's placement, once";
    tool->SetRootMdlTrsf(place * place);
    EXPECT_THAT(cone->Transformation(), IsTrsf(place * place));
    EXPECT_TRUE(cone->IsDisplayed());
    EXPECT_FALSE(cone->takesPartInCollision);
    EXPECT_EQ(cone->GetLayers().back().second.transparency, 0.8);
    EXPECT_FALSE(tool->GetWatertightMeshModel().IsNull());
    EXPECT_EQ(tool->GetFixMdls().size(), 3U) << "a cone is no part of the tool";
}

TEST_F(Painting, ConeIsRebuiltOnlyWhenSizeFrameOrSwitchChange) {
    tool->Initial();
    const TopoDS_Shape first = Cone();
    tool->SetPaintedTool();
    EXPECT_TRUE(Cone().IsSame(first));
    config.paintUpRadius = 10.9;
    tool->SetPaintedTool();
    EXPECT_TRUE(Cone().IsSame(first)) << "within the millimetre";
    config.paintUpRadius = 11.0;
    tool->SetPaintedTool();
    const TopoDS_Shape second = Cone();
    EXPECT_FALSE(second.IsSame(first));
    config.paintShown = false;
    tool->SetPaintedTool();
    EXPECT_FALSE(tool->GetPaintedMdl()->IsDisplayed());
    tool->GetRootMdl()->Display(1, 0);
    EXPECT_FALSE(tool->GetPaintedMdl()->IsDisplayed()) << "showing the tool does not bring the cone back";
    EXPECT_TRUE(tool->UpdataToolParameterData(sample::TorchParameters()));
    EXPECT_FALSE(tool->GetPaintedMdl()->IsDisplayed()) << "nor does a rebuild";
    const gp_Trsf elsewhere = gpHandle::EulerToTrsf(LocEuler({0, 70, 0}, {0, 0, 1}));
    tool->SetRootMdlTrsf(elsewhere);
    config.paintShown = true;
    tool->SetPaintedTool();
    EXPECT_TRUE(tool->GetPaintedMdl()->IsDisplayed());
    EXPECT_THAT(tool->GetPaintedMdl()->Transformation(), IsTrsf(elsewhere)) << "moved while switched off";
    EXPECT_FALSE(Cone().IsSame(second));
    EXPECT_TRUE(tool->UpdataToolParameterData(sample::TorchParameters())) << "the cone is not a fourth part";
    EXPECT_EQ(tool->GetRootMdl()->Children().Size(), 4);
    config.paintDownRadius = config.paintUpRadius = 50;
    for (const char* attempt : {"first", "second"}) {
        EXPECT_THROW(tool->SetPaintedTool(), Standard_Failure)
            << attempt << ": the old cone is not of this size";
    }
    Json::Value parameters = sample::TorchParameters();
    parameters["ToolWorkType"] = "paint";
    tool->UpdataToolParameterData(parameters);
    EXPECT_THAT(Thrown([&] { tool->Initial(); }), testing::HasSubstr("ToolWorkType: \"paint\", expected"));
}

TEST_F(Painting, ConeIsNotBuiltDuringMeshLoadingOrWhenSwitchedOff) {
    LogCapture log;
    LogUtils::Logger()->set_level(spdlog::level::debug);
    tool->SetLoadMeshModel(true);
    tool->SetPaintedTool();
    EXPECT_TRUE(tool->GetPaintedMdl().IsNull());
    const LogRecord record = log.Records().at(0);
    EXPECT_EQ(std::pair(record.level, record.line), std::pair(spdlog::level::debug, 343));
    EXPECT_EQ(record.function + ": " + record.text,
              "ToolEntity::UpdatePaintedModel: 正在构建喷涂模型中，请稍后重试");
    tool->SetLoadMeshModel(false);
    tool->SetPaintedTool();
    EXPECT_FALSE(tool->GetPaintedMdl().IsNull()) << "a later try succeeds";
    ToolEntity never;
    never.SetToolWorkType(ToolEntity::WorkTypePainting);
    config.paintShown = false;
    never.SetPaintedTool();
    never.UpdatePaintedModel(gp_Trsf());
    EXPECT_TRUE(never.GetPaintedMdl().IsNull());
    config.paintShown = true;
    never.SetToolWorkType(ToolEntity::WorkTypeWelding);
    never.UpdatePaintedModel(gp_Trsf());
    EXPECT_TRUE(never.GetPaintedMdl().IsNull());
}

} // namespace
