#include <BRepPrimAPI_MakeBox.hxx>
#include <Standard_Failure.hxx>
#include <climits>
#include <json/json.h>
#include <support/AddressSanitizer.h>
#include <support/Mechanism.h>

// Numbers that no caller means: each operation takes each of them, answers soon and with a bounded result, or
// says what is wrong. What a conversion may not do is for the sanitizers to see.

namespace {

using namespace InterpHandle;
using ::testing::HasSubstr;

constexpr std::uint64_t System = 93;
/// No answer to a number below needs more: what asks for more is refused.
constexpr std::size_t AFewSamples = 1000;
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double Hostile[] = {std::numeric_limits<double>::quiet_NaN(),
                              Infinity,
                              -Infinity,
                              1e308,
                              -1e308,
                              std::numeric_limits<double>::denorm_min(),
                              -std::numeric_limits<double>::denorm_min(),
                              4e9,
                              -1,
                              0};

struct Fixture {
    const Registrar cell{System, {.pedestal = 1, .benches = {1.0}}};
    GrpState a{System}, b{System};
    RobotEntity robot{sample::Build(sample::SixAxisArm(), System).get()};
    PedestalEntity rail{sample::Build(sample::TwoAxisRail(), 5).get()};
    BenchEntity bench{sample::Build(sample::Positioner(), 6).get()};
    std::vector<double> steps = std::vector<double>(8, 0.1);

    Fixture() {
        GrpConfig::GetCoupledValue(System).index[0] = 0;
        b.SetValues({1, 2, 3, 4, 5, 6, 7, 8});
        b.SetLocEuler(0, {gp_Pnt(10, 0, 0), gp_Pnt(0, 1, 0)});
    }
    ~Fixture() { GrpConfig::ChangeCoupledList().erase(System); }
};

struct Operation {
    const char* name;
    /// @return how many elements came of it.
    std::size_t (*run)(Fixture&, double);
};

void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

class HostileNumber : public testing::TestWithParam<Operation> {};

TEST_P(HostileNumber, ExtremeNumberIsAnsweredOrRefused) {
    for (const double number : Hostile) {
        SCOPED_TRACE(number);
        Fixture fixture;
        try {
            EXPECT_LE(GetParam().run(fixture, number), AFewSamples);
        } catch (const std::exception& error) {
            EXPECT_THAT(error.what(), testing::AnyOf(HasSubstr("expected"), HasSubstr("invalid vector"),
                                                     HasSubstr("no range"), HasSubstr("not a finite"),
                                                     HasSubstr("bad_alloc")));
        } catch (const std::string& text) {
            EXPECT_THAT(text, HasSubstr("限位错误"));
        } catch (const Standard_Failure& failure) {
            EXPECT_STRNE(failure.GetMessageString(), "");
        }
    }
}

std::vector<PathPose> PathTo(double x) {
    return {{gp_Pnt(), gp::DZ()}, {gp_Pnt(10, 0, 0), gp::DZ()}, {gp_Pnt(x, 5, 0), gp_Dir(0.1, 0, 1)}};
}

Json::Value Tool(const char* key, double number, int type = 0) {
    Json::Value json = Parsed(R"({"ToolIndex": 1, "Q1": 1.0})");
    json["Type"] = type;
    json[key] = number;
    return json;
}

std::size_t Move(GenericEntityConfig& entity, double number) {
    entity.SetCurrentValue(std::vector<double>(8, number), 0);
    entity.ForwardTrsf(0, true, true);
    return entity.GetLimit(0, number).size();
}

INSTANTIATE_TEST_SUITE_P(
    Interpolation, HostileNumber,
    testing::Values(
        Operation{"StatesByStep",
                  [](Fixture& f, double x) {
                      f.steps[3] = x;
                      return InterpolationPts(f.a, f.b, f.steps).size();
                  }},
        Operation{"StatesOfValue",
                  [](Fixture& f, double x) {
                      f.b.SetValue(Robot, 2, x);
                      return InterpolationPts({f.a, f.b, f.a}, f.steps).size();
                  }},
        Operation{"StatesByGap",
                  [](Fixture& f, double x) { return InterpolationPtsByPosGap(f.a, f.b, x).size(); }},
        Operation{"StatesOfPose",
                  [](Fixture& f, double x) {
                      f.b.SetLocEuler(0, {gp_Pnt(x, 0, 0), gp_Pnt(0, x, 0)});
                      return InterpolationPtsByPosGap(f.a, f.b, 1).size();
                  }},
        Operation{"StatesByQuaternion",
                  [](Fixture& f, double x) { return InterpolationPtsByQuaternion(f.a, f.b, x).size(); }},
        Operation{"PointsByStep",
                  [](Fixture&, double x) { return InterpolationPts(gp_Pnt(), gp_Pnt(9, 0, 0), x).size(); }},
        Operation{"PointsTo",
                  [](Fixture&, double x) { return InterpolationPts(gp_Pnt(), gp_Pnt(x, 0, 0), 1).size(); }},
        Operation{"VectorsByStep",
                  [](Fixture&, double x) {
                      return InterpolationPtsDescartes({0, 1}, {5, 0}, x).size();
                  }},
        Operation{"VectorsTo",
                  [](Fixture&, double x) {
                      return InterpolationPtsDescartes({0, 1}, {5, x}, 1).size();
                  }},
        Operation{"PolylineByStep",
                  [](Fixture&, double x) {
                      std::vector<std::vector<double>> out;
                      EquallyDisInterpolate({{0, 0}, {1, 2}, {0, 0}}, out, x);
                      return out.size();
                  }},
        Operation{"PolylineTo",
                  [](Fixture&, double x) {
                      std::vector<std::vector<double>> out;
                      EquallyDisInterpolate({{0}, {x}}, out, 1);
                      return out.size();
                  }},
        Operation{"AnglesByStep",
                  [](Fixture&, double x) {
                      return InterpolationPtsByQuaternion(gp_Pnt(), gp_Pnt(1, 0, 0), x).size();
                  }},
        Operation{"AnglesAlong",
                  [](Fixture&, double x) {
                      return EulerByQuaternion(gp_Pnt(x, 0, 0), gp_Pnt(1, 0, 0), {{}, {x, 0, 0}}).size();
                  }},
        Operation{"PosesByStep",
                  [](Fixture& f, double x) {
                      const LocEuler& from = f.a.GetLocEuler(0);
                      return InterpolationPtsByQuaternion(from, f.b.GetLocEuler(0), x).size() +
                             InterpolationPtsByQuaternion(from, f.b.GetLocEuler(0), x, x).size();
                  }},
        Operation{"Blends",
                  [](Fixture& f, double x) {
                      EulerScaleByQuaternion(gp_Pnt(x, 0, 0), gp_Pnt(), x);
                      InterpolationScaleTrsf(gp_Trsf(), gp_Trsf(), x);
                      return InterpolationScalePts(f.a, f.b, x).GetValues().size();
                  }},
        Operation{"SplineByBase",
                  [](Fixture&, double x) {
                      auto path = PathTo(20);
                      SplineInterpolation(path, x);
                      return path.size();
                  }},
        Operation{"SplineTo",
                  [](Fixture&, double x) {
                      auto path = PathTo(x);
                      SplineInterpolation(path, 1);
                      return path.size();
                  }},
        Operation{
            "ArraysBySpline",
            [](Fixture&, double x) {
                std::vector<ArrayPose> path = {{0, 0, 0, 0, 0, 1}, {10, 0, 0, x, 0, 1}, {20, x, 0, 0, 0, 1}};
                SplineInterpolationArry(path, x);
                return path.size();
            }},
        Operation{"PathsOnFace",
                  [](Fixture&, double x) {
                      std::vector<std::vector<std::vector<ArrayPose>>> groups = {{{{x, 0, 0, 0, 0, 1}}}};
                      CheckPathsOnFace(
                          groups, new ShapeEntity(BRepPrimAPI_MakeBox(1, 1, 1).Shape(), Uuid::CreateUuid()),
                          x);
                      return groups.size();
                  }}),
    [](const auto& entry) { return std::string(entry.param.name); });

INSTANTIATE_TEST_SUITE_P(
    StatesAndEntities, HostileNumber,
    testing::Values(
        Operation{"StateValues",
                  [](Fixture& f, double x) {
                      f.a.SetValues(std::vector<double>(8, x));
                      f.a.SetOffset(static_cast<float>(std::clamp(x, -1e38, 1e38)));
                      std::vector<GrpState> states = {f.a, f.b, f.a};
                      GrpStateUtils::SortRobotStateJ(f.b, states, 6);
                      GrpState back(System);
                      back.FromJson(f.a.ToJson());
                      return f.a.GetScaleValues(x).size() + states.size() +
                             GrpStateUtils::RemoveDuplicatedStates(states, x).size();
                  }},
        Operation{
            "StateDocument",
            [](Fixture& f, double x) {
                for (const char* key : {"system_index", "Model", "ToolIndex", "ZOffset", "RobotPathType"}) {
                    Json::Value json = f.a.ToJson();
                    json[key] = x;
                    try {
                        f.a.FromJson(json);
                    } catch (const Json::Exception&) {
                    } catch (const std::out_of_range&) { // no such system
                    }
                }
                return f.a.GetValues().size();
            }},
        Operation{"Benches",
                  [](Fixture&, double x) {
                      const Registrar other(System + 1, {.benches = {x, 1}});
                      const GrpState state(System + 1);
                      return static_cast<std::size_t>(state.GetBenchDof());
                  }},
        Operation{"RobotMoves", [](Fixture& f, double x) { return Move(f.robot, x); }},
        Operation{"RailMoves", [](Fixture& f, double x) { return Move(f.rail, x); }},
        Operation{"BenchMoves",
                  [](Fixture& f, double x) {
                      f.bench.KinematicForward({x, x}, true);
                      return Move(f.bench, x);
                  }},
        Operation{"RobotDocument",
                  [](Fixture& f, double x) {
                      Json::Value json = f.robot.ToJson("");
                      json["J2"]["axis_max"] = x;
                      json["DH"][1][2] = x;
                      f.robot.LoadFromJson(json);
                      f.robot.ShowBestWorkspace(true);
                      return f.robot.GetArmDH().size();
                  }},
        Operation{"ToolRecord",
                  [](Fixture& f, double x) {
                      f.robot.SetZOffset(x);
                      f.robot.SetToolData(Tool("Z", x));
                      f.robot.SetToolData(Tool("RX", x));
                      f.robot.SetToolData(Tool("Q2", x, 1));
                      f.robot.GetCurrentTCP();
                      return f.robot.GetTools().size();
                  }},
        Operation{"ToolIndex",
                  [](Fixture& f, double x) {
                      f.robot.SetToolData(Tool("ToolIndex", x));
                      return f.robot.GetTools().size();
                  }},
        Operation{"Spheroid",
                  [](Fixture& f, double x) {
                      f.robot.SetMaxWorkSpaceModel({x, 0, 0, 500});
                      f.robot.SetMaxWorkSpaceModel({0, x, x, 500});
                      f.robot.SetMaxWorkSpaceModel({0, 0, 0, x});
                      return std::size_t{0};
                  }},
        Operation{
            "Torch",
            [](Fixture&, double x) {
                for (const char* key : {"tip_radius", "body_length", "tcp_z", "tcp_x", "guard_clearance"}) {
                    Json::Value json = sample::TorchParameters();
                    json[key] = x;
                    try {
                        ToolEntity::CreateToolEntityByParameter(json);
                    } catch (const std::invalid_argument& refused) {
                        EXPECT_THAT(refused.what(), HasSubstr(key));
                    }
                }
                return std::size_t{0};
            }}),
    [](const auto& entry) { return std::string(entry.param.name); });

// The address sanitizer ends the process where memory does.
#ifndef UNDER_ADDRESS_SANITIZER
TEST(HostileCounts, BeyondMemoryAreRefusedBeforeAnythingIsMade) {
    Fixture f;
    EXPECT_THROW(EulerByQuaternion({}, {1, 0, 0}, INT_MAX), std::bad_alloc);
    EXPECT_THROW(InterpolationPtsByNum(gp_Pnt(), {1, 0, 0}, INT_MAX), std::bad_alloc);
    EXPECT_THROW(InterpolationPtsByNum({0}, {1}, INT_MAX), std::bad_alloc);
    f.steps.assign(8, 1e-8);
    EXPECT_THROW(InterpolationPts({f.a, f.b, f.a}, f.steps), std::bad_alloc);
    EXPECT_THROW(InterpolationPtsDescartes({0}, {2e9}, 1), std::bad_alloc);
    std::vector<std::vector<double>> out = {{7}};
    EXPECT_THROW(EquallyDisInterpolate({{0}, {1e9}, {-1e9}}, out, 1), std::bad_alloc) << "in all";
    EXPECT_EQ(out.size(), 1U);
    EXPECT_THROW(f.robot.SetToolData(Tool("ToolIndex", INT_MAX)), std::bad_alloc);
    EXPECT_EQ(f.robot.GetTools().size(), 1U);
}
#endif

TEST(HostileCounts, BeyondAnIntAreRefusedBeforeAnythingIsMade) {
    Fixture f;
    const std::string limit = "expected at most 2147483647";
    EXPECT_EQ(InterpolationPtsByNum({0}, {1}, INT_MIN).size(), 1U);
    EXPECT_TRUE(EulerByQuaternion({}, {1, 0, 0}, INT_MIN).empty());
    EXPECT_EQ(SparsePathPair(PathTo(20), INT_MIN).size(), 2U);
    f.steps.assign(8, 1e-9);
    EXPECT_THAT(Thrown([&] { InterpolationPts({f.a, f.b}, f.steps); }), HasSubstr(limit));
    std::vector<std::vector<double>> out = {{7}};
    EXPECT_THAT(Thrown([&] { EquallyDisInterpolate({{0}, {1}, {1e9}}, out, 1e-3); }), HasSubstr(limit));
    EXPECT_THAT(Thrown([&] {
                    EquallyDisInterpolate({{0, 1}, {1}}, out, 1);
                }),
                HasSubstr("vector 1 has 1 values"));
    EXPECT_EQ(out.size(), 1U) << "all or nothing";

    for (const int index : {INT_MIN, -1}) {
        EXPECT_EQ(Thrown([&] { f.robot.ChangeCurrentTool(index); }), "invalid vector subscript");
        EXPECT_EQ(Thrown([&] { f.robot.GetToolFromVector(index); }), "invalid vector subscript");
        EXPECT_EQ(Thrown([&] { f.robot.GetCurJointTrsf(index); }), "invalid vector subscript");
    }
    EXPECT_EQ(f.robot.GetToolIndex(), 0);
    EXPECT_EQ(f.robot.GetTools().size(), 1U);
    f.robot.SetToolData(Tool("ToolIndex", 70000));
    EXPECT_EQ(f.robot.GetTools().size(), 70001U);

    GrpConfig config;
    EXPECT_THAT(Thrown([&] { config.InitDOF(0, INT_MAX, 2, 0); }), HasSubstr("robotDof: 2147483647"));
    EXPECT_THAT(Thrown([&] { config.InitDOF(0, 1000000, 1000000, 0); }), HasSubstr("contextDof: 1e+12"));
    EXPECT_THAT(Thrown([&] { config.InitDOF(-1, 6, 1, 0); }), HasSubstr("pedestalDof: -1, expected 0 to"));
    EXPECT_EQ(config.robotDof, 6);
    for (const double axes : {-1.0, 1e6, INT_MAX - 6.0}) {
        EXPECT_THROW(config.SetBenchesDofs({axes}), std::invalid_argument) << axes;
    }
    EXPECT_EQ(config.contextDof, 6);
}

// What was never bound or set up has nothing to give, and says so instead of reaching for it.
TEST(Empty, OperationsRefuseOrDoNothing) {
    GrpState unbound;
    unbound.SetValues(Robot, {1, 2});
    unbound.AddOtherValues(std::vector<double>());
    EXPECT_TRUE(unbound.GetValues().empty() && unbound.GetScaleValues(1).empty());
    EXPECT_EQ(unbound.GetRobotAndPedestalDof() + unbound.GetBenchDof(), 0);
    EXPECT_THROW(unbound.GetValue(Robot, ARM_J1), std::out_of_range);
    EXPECT_THROW(unbound.SetValue(Pedestal, 0, 1), std::out_of_range);

    RobotEntity robot;
    EXPECT_THAT(Thrown([&] { robot.AddWorkbench(nullptr); }), HasSubstr("workbench: null"));
    EXPECT_THAT(Thrown([&] { robot.DeleteWorkbench(nullptr); }), HasSubstr("workbench: null"));
    EXPECT_THAT(Thrown([&] { robot.ShowBestWorkspace(true); }), HasSubstr("workspace: none"));
    EXPECT_THROW(robot.UpdateMaxWork(), std::logic_error);
    EXPECT_THROW(robot.LinkToJson(nullptr), std::invalid_argument);
    EXPECT_TRUE(robot.GetWorkbenches().empty());
}

// States that do not fit together reach no memory but their own.
TEST(UnequalStates, OperationsUseTheCommonValuesOnly) {
    const Registrar large(System, {.pedestal = 3}), small(System + 1, {});
    GrpState a(System), b(System + 1);
    b.SetValues({1, 2, 3});
    EXPECT_THAT(b.GetValues(), testing::ElementsAre(1, 2, 3, 0, 0, 0));
    a.SetValuesByState(b);
    EXPECT_EQ(a.GetValue(Robot, ARM_J3), 3);
    EXPECT_FALSE(a.IsEqual(b, Infinity));
    EXPECT_TRUE(b.IsEqual(a, 0));
    const GrpState taker(std::move(b));
    EXPECT_FALSE(taker == b || taker.IsEqualForSimu(b) || taker.IsEqual(GrpState(), 1));
    a.AddOtherValues(b);
    b.AddOtherValues(a);
    EXPECT_TRUE(b.GetValues().empty() && b.GetValues(Robot).empty());
    EXPECT_THROW(b.SetValue(Robot, 0, 1), std::out_of_range);
    EXPECT_THROW(a.SetValue(Pedestal, 3, 1), std::out_of_range);
    EXPECT_THROW(a.GetValue(static_cast<EntityName>(-9), ARM_J1), std::out_of_range);
    EXPECT_THAT(Thrown([&] {
                    InterpolationPts(a, taker, {1, 1, 1, 1, 1, 1, 1, 1, 1});
                }),
                HasSubstr("of one"));
    EXPECT_THAT(Thrown([&] { InterpolationPts(taker, a, {1}); }), HasSubstr("1 steps, expected 6"));
    EXPECT_THROW(InterpolationScalePts(b, a, 1), std::invalid_argument);

    // A document may name a larger system: its layout counts, the buffer stays.
    b = GrpState(System + 1);
    const double* const buffer = b.GetValuesPtr();
    EXPECT_TRUE(b.FromJson(a.ToJson()));
    EXPECT_EQ(b.GetSystem(), System);
    EXPECT_EQ(b.GetContextDof(), 9);
    EXPECT_EQ(b.GetValuesPtr(), buffer);
    b.SetValues(std::vector<double>(9, 4));
    EXPECT_EQ(GrpState(b).GetValues(), std::vector<double>(6, 4));
    EXPECT_TRUE(b.GetValues(Pedestal).empty());
    EXPECT_EQ(b.ToJson()["J_value"].size(), 6U);
    EXPECT_THROW(b.GetValue(Pedestal, Gantry_X1), std::out_of_range);
    EXPECT_FALSE(a == b || a.IsEqual(b, Infinity));
    EXPECT_THROW(InterpolationScalePts(b, a, 1), std::invalid_argument);
    b = GrpState(System + 1);
    EXPECT_THROW(ContextState(Json::Value()).GetValues(1), std::out_of_range);
    GrpConfig::GetCoupledValue(System).enabled = true;
    GrpConfig::GetCoupledValue(System).index[1] = -5;
    GrpConfig::GetCoupledValue(System).index[0] = 1;
    EXPECT_THROW(a.GetValuesCoupling(), std::out_of_range);
}

} // namespace
