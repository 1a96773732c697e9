#include <BRepPrimAPI_MakeBox.hxx>
#include <Standard_Failure.hxx>
#include <climits>
#include <json/json.h>
#include <support/AddressSanitizer.h>
#include <support/Mechanism.h>

// Extreme numbers: each operation either returns a bounded result or refuses the number with a text that says
// why. Undefined conversions are detected by the sanitizers' build.

namespace {

using namespace InterpHandle;
using testing::HasSubstr;

constexpr std::uint64_t System = 93;
/// No number below may produce more elements than this.
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
    const Registrar registrar{System, {.pedestal = 1, .benches = {1.0}}};
    GrpState a{System}, b{System};
    RobotEntity robot{sample::Build(sample::SixAxisArm(), System).get()};
    PedestalEntity rail{sample::Build(sample::TwoAxisRail(), 5).get()};
    BenchEntity bench{sample::Build(sample::Positioner(), 6).get()};
    std::vector<double> steps = std::vector<double>(8, 0.1);
    GrpConfig config;
    std::vector<std::vector<double>> out = {{7}};

    Fixture() {
        GrpConfig::GetCoupledValue(System).index[0] = 0;
        b.SetValues({1, 2, 3, 4, 5, 6, 7, 8});
        b.SetLocEuler(0, {gp_Pnt(10, 0, 0), gp_Pnt(0, 1, 0)});
    }
    std::vector<double> With(double x) {
        steps[3] = x;
        return steps;
    }
    std::vector<GrpState> To(double x) {
        b.SetValue(Robot, 2, x);
        return {a, b, a};
    }
    GrpState At(double x) {
        b.SetLocEuler(0, {gp_Pnt(x, 0, 0), gp_Pnt(0, x, 0)});
        return b;
    }
    std::size_t ToolsWithIndex(double x);
    const LocEuler& From() const { return a.GetLocEuler(0); }
    const LocEuler& Goal() const { return b.GetLocEuler(0); }
};

struct Operation {
    const char* name;
    /// @return number of elements of the result.
    std::size_t (*run)(Fixture&, double);
};

std::string NameOf(const testing::TestParamInfo<Operation>& entry) { return entry.param.name; }

class HostileNumber : public testing::TestWithParam<Operation> {};

TEST_P(HostileNumber, ExtremeNumberGivesABoundedResultOrIsRefused) {
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

std::size_t Fixture::ToolsWithIndex(double x) {
    robot.SetToolData(Tool("ToolIndex", x));
    return robot.GetTools().size();
}

std::size_t Move(GenericEntityConfig& entity, double number) {
    entity.SetCurrentValue(std::vector<double>(8, number), 0);
    entity.ForwardTrsf(0, true, true);
    return entity.GetLimit(0, number).size();
}

std::vector<double> Two(double a, double b) { return {a, b}; }
const gp_Pnt Origin, UnitX(1, 0, 0);

std::size_t Filled(double to, double step) {
    std::vector<std::vector<double>> out;
    EquallyDisInterpolate({{0, 0}, {to, 2}, {0, 0}}, out, step);
    return out.size();
}
std::size_t Smoothed(std::vector<PathPose> path, double base) {
    SplineInterpolation(path, base);
    return path.size();
}
std::size_t SmoothedArrays(double x) {
    std::vector<ArrayPose> path = {{0, 0, 0, 0, 0, 1}, {10, 0, 0, x, 0, 1}, {20, x, 0, 0, 0, 1}};
    SplineInterpolationArry(path, x);
    return path.size();
}
std::size_t Checked(double x) {
    std::vector<std::vector<std::vector<ArrayPose>>> groups = {{{{x, 0, 0, 0, 0, 1}}}};
    CheckPathsOnFace(groups, new ShapeEntity(BRepPrimAPI_MakeBox(1, 1, 1).Shape(), Uuid()), x);
    return groups.size();
}

constexpr Operation Interpolation[] = {
    {"StatesByStep", [](Fixture& f, double x) { return InterpolationPts(f.a, f.b, f.With(x)).size(); }},
    {"StatesOfValue", [](Fixture& f, double x) { return InterpolationPts(f.To(x), f.steps).size(); }},
    {"StatesByGap", [](Fixture& f, double x) { return InterpolationPtsByPosGap(f.a, f.b, x).size(); }},
    {"StatesOfPose", [](Fixture& f, double x) { return InterpolationPtsByPosGap(f.a, f.At(x), 1).size(); }},
    {"StatesTurned", [](Fixture& f, double x) { return InterpolationPtsByQuaternion(f.a, f.b, x).size(); }},
    {"PointsByStep", [](Fixture&, double x) { return InterpolationPts(Origin, UnitX, x).size(); }},
    {"PointsTo", [](Fixture&, double x) { return InterpolationPts(Origin, gp_Pnt(x, 0, 0), 1).size(); }},
    {"Vectors", [](Fixture&, double x) { return InterpolationPtsDescartes(Two(0, 1), Two(5, 0), x).size(); }},
    {"VectorsTo",
     [](Fixture&, double x) { return InterpolationPtsDescartes(Two(0, 1), Two(5, x), 1).size(); }},
    {"Polyline", [](Fixture&, double x) { return Filled(1, x); }},
    {"PolylineTo", [](Fixture&, double x) { return Filled(x, 1); }},
    {"Angles", [](Fixture&, double x) { return InterpolationPtsByQuaternion(Origin, UnitX, x).size(); }},
    {"AnglesAlong",
     [](Fixture&, double x) {
         return EulerByQuaternion(gp_Pnt(x, 0, 0), UnitX, {Origin, gp_Pnt(x, 0, 0)}).size();
     }},
    {"Poses",
     [](Fixture& f, double x) { return InterpolationPtsByQuaternion(f.From(), f.Goal(), x).size(); }},
    {"PosesTurned",
     [](Fixture& f, double x) { return InterpolationPtsByQuaternion(f.From(), f.Goal(), x, x).size(); }},
    {"Blends",
     [](Fixture& f, double x) {
         EulerScaleByQuaternion(gp_Pnt(x, 0, 0), gp_Pnt(), x);
         InterpolationScaleTrsf(gp_Trsf(), gp_Trsf(), x);
         return InterpolationScalePts(f.a, f.b, x).GetValues().size();
     }},
    {"SplineByBase", [](Fixture&, double x) { return Smoothed(PathTo(20), x); }},
    {"SplineTo", [](Fixture&, double x) { return Smoothed(PathTo(x), 1); }},
    {"ArraysBySpline", [](Fixture&, double x) { return SmoothedArrays(x); }},
    {"PathsOnFace", [](Fixture&, double x) { return Checked(x); }},
};
INSTANTIATE_TEST_SUITE_P(Interpolation, HostileNumber, testing::ValuesIn(Interpolation), NameOf);

constexpr Operation StatesAndEntities[] = {
    {"StateValues",
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
    {"StateDocument",
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
    {"Benches",
     [](Fixture&, double x) {
         const Registrar other(System + 1, {.benches = {x, 1}});
         return static_cast<std::size_t>(GrpState(System + 1).GetBenchDof());
     }},
    {"RobotMoves", [](Fixture& f, double x) { return Move(f.robot, x); }},
    {"RailMoves", [](Fixture& f, double x) { return Move(f.rail, x); }},
    {"BenchMoves",
     [](Fixture& f, double x) {
         f.bench.KinematicForward({x, x}, true);
         return Move(f.bench, x);
     }},
    {"RobotDocument",
     [](Fixture& f, double x) {
         Json::Value json = f.robot.ToJson("");
         json["J2"]["axis_max"] = x;
         json["DH"][1][2] = x;
         f.robot.LoadFromJson(json);
         f.robot.ShowBestWorkspace(true);
         return f.robot.GetArmDH().size();
     }},
    {"ToolRecord",
     [](Fixture& f, double x) {
         f.robot.SetZOffset(x);
         f.robot.SetToolData(Tool("Z", x));
         f.robot.SetToolData(Tool("RX", x));
         f.robot.SetToolData(Tool("Q2", x, 1));
         f.robot.GetCurrentTCP();
         return f.robot.GetTools().size();
     }},
    {"ToolIndex", [](Fixture& f, double x) { return f.ToolsWithIndex(x); }},
    {"Spheroid",
     [](Fixture& f, double x) {
         f.robot.SetMaxWorkSpaceModel({x, 0, 0, 500});
         f.robot.SetMaxWorkSpaceModel({0, x, x, 500});
         f.robot.SetMaxWorkSpaceModel({0, 0, 0, x});
         return std::size_t{0};
     }},
    {"Torch",
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
     }},
};
INSTANTIATE_TEST_SUITE_P(StatesAndEntities, HostileNumber, testing::ValuesIn(StatesAndEntities), NameOf);

/// A call that must be refused, changing nothing.
struct Refusal {
    const char* name;
    void (*run)(Fixture&);
    const char* text; ///< part of the message
};

class Refused : public testing::TestWithParam<Refusal> {};

TEST_P(Refused, ThrowsItsTextAndChangesNothing) {
    Fixture f;
    f.steps.assign(8, 1e-9);
    EXPECT_THROW(GetParam().run(f), std::logic_error);
    EXPECT_THAT(Thrown([&] { GetParam().run(f); }), HasSubstr(GetParam().text));
    EXPECT_EQ(f.robot.GetTools().size(), 1U);
    EXPECT_EQ(f.robot.GetToolIndex(), 0);
    EXPECT_EQ(f.config.robotDof, 6);
    EXPECT_EQ(f.config.contextDof, 6);
    EXPECT_EQ(f.out.size(), 1U) << "all or nothing";
}

constexpr const char* TooMany = "expected at most 2147483647";
constexpr const char* Subscript = "invalid vector subscript";
constexpr Refusal Counts[] = {
    {"States",
     [](Fixture& f) {
         InterpolationPts({f.a, f.b}, f.steps);
     },
     TooMany},
    {"Vectors",
     [](Fixture& f) {
         EquallyDisInterpolate({{0}, {1}, {1e9}}, f.out, 1e-3);
     },
     TooMany},
    {"UnequalVectors",
     [](Fixture& f) {
         EquallyDisInterpolate({{0, 1}, {1}}, f.out, 1);
     },
     "vector 1 has 1 values"},
    {"CurrentTool", [](Fixture& f) { f.robot.ChangeCurrentTool(-1); }, Subscript},
    {"LowestCurrentTool", [](Fixture& f) { f.robot.ChangeCurrentTool(INT_MIN); }, Subscript},
    {"Tool", [](Fixture& f) { f.robot.GetToolFromVector(-1); }, Subscript},
    {"LowestTool", [](Fixture& f) { f.robot.GetToolFromVector(INT_MIN); }, Subscript},
    {"Joint", [](Fixture& f) { f.robot.GetCurJointTrsf(-1); }, Subscript},
    {"LowestJoint", [](Fixture& f) { f.robot.GetCurJointTrsf(INT_MIN); }, Subscript},
    {"Joints", [](Fixture& f) { f.config.InitDOF(0, INT_MAX, 2, 0); }, "robotDof: 2147483647"},
    {"Product", [](Fixture& f) { f.config.InitDOF(0, 1000000, 1000000, 0); }, "contextDof: 1e+12"},
    {"Pedestal", [](Fixture& f) { f.config.InitDOF(-1, 6, 1, 0); }, "pedestalDof: -1, expected 0 to"},
    {"BenchBelowZero", [](Fixture& f) { f.config.SetBenchesDofs({-1}); }, "bench axes: -1"},
    {"Bench", [](Fixture& f) { f.config.SetBenchesDofs({1e6}); }, "expected 0 to"},
    {"BenchSum", [](Fixture& f) { f.config.SetBenchesDofs({INT_MAX - 6.0}); }, "expected 0 to"},
};
constexpr Refusal Missing[] = {
    {"ValueOfUnbound", [](Fixture&) { GrpState().GetValue(Robot, ARM_J1); }, Subscript},
    {"SettingUnbound", [](Fixture&) { GrpState().SetValue(Pedestal, 0, 1); }, Subscript},
    {"AddingNoWorkbench", [](Fixture& f) { f.robot.AddWorkbench(nullptr); }, "workbench: null"},
    {"DeletingNoWorkbench", [](Fixture& f) { f.robot.DeleteWorkbench(nullptr); }, "workbench: null"},
    {"Workspace", [](Fixture&) { RobotEntity().ShowBestWorkspace(true); }, "workspace: none"},
    {"MaximumReach", [](Fixture&) { RobotEntity().UpdateMaxWork(); }, "workspace: none"},
    {"Link", [](Fixture& f) { f.robot.LinkToJson(nullptr); }, "null link"},
    {"ContextOfNull", [](Fixture&) { ContextState(Json::Value()).GetValues(1); }, "invalid map"},
};
std::string NameOfRefusal(const testing::TestParamInfo<Refusal>& entry) { return entry.param.name; }
INSTANTIATE_TEST_SUITE_P(Counts, Refused, testing::ValuesIn(Counts), NameOfRefusal);
INSTANTIATE_TEST_SUITE_P(Missing, Refused, testing::ValuesIn(Missing), NameOfRefusal);

// With the address sanitizer a failed allocation ends the process.
#ifndef UNDER_ADDRESS_SANITIZER
TEST(HostileCounts, BeyondMemoryAreRefusedWithoutChange) {
    Fixture f;
    EXPECT_THROW(EulerByQuaternion({}, {1, 0, 0}, INT_MAX), std::bad_alloc);
    EXPECT_THROW(InterpolationPtsByNum(gp_Pnt(), {1, 0, 0}, INT_MAX), std::bad_alloc);
    EXPECT_THROW(InterpolationPtsByNum({0}, {1}, INT_MAX), std::bad_alloc);
    f.steps.assign(8, 1e-8);
    EXPECT_THROW(InterpolationPts({f.a, f.b, f.a}, f.steps), std::bad_alloc);
    EXPECT_THROW(InterpolationPtsDescartes({0}, {2e9}, 1), std::bad_alloc);
    EXPECT_THROW(EquallyDisInterpolate({{0}, {1e9}, {-1e9}}, f.out, 1), std::bad_alloc) << "in all";
    EXPECT_EQ(f.out.size(), 1U);
    EXPECT_THROW(f.robot.SetToolData(Tool("ToolIndex", INT_MAX)), std::bad_alloc);
    EXPECT_EQ(f.robot.GetTools().size(), 1U);
}
#endif

TEST(HostileCounts, LowestIntAndLargestToolIndexAreAccepted) {
    Fixture f;
    EXPECT_EQ(InterpolationPtsByNum({0}, {1}, INT_MIN).size(), 1U);
    EXPECT_TRUE(EulerByQuaternion({}, {1, 0, 0}, INT_MIN).empty());
    EXPECT_EQ(SparsePathPair(PathTo(20), INT_MIN).size(), 2U);
    f.robot.SetToolData(Tool("ToolIndex", 70000));
    EXPECT_EQ(f.robot.GetTools().size(), 70001U);
}

TEST(UnboundState, HasNoValuesAndIgnoresThoseSet) {
    GrpState unbound;
    unbound.SetValues(Robot, {1, 2});
    unbound.AddOtherValues(std::vector<double>());
    EXPECT_TRUE(unbound.GetValues().empty() && unbound.GetScaleValues(1).empty());
    EXPECT_EQ(unbound.GetRobotAndPedestalDof() + unbound.GetBenchDof(), 0);
    EXPECT_TRUE(RobotEntity().GetWorkbenches().empty());
}

struct UnequalStates : testing::Test {
    const Registrar large{System, {.pedestal = 3}}, small{System + 1, {}};
    GrpState nine{System}, six{System + 1};
};

TEST_F(UnequalStates, OperationsUseTheCommonValuesOnly) {
    six.SetValues({1, 2, 3});
    EXPECT_THAT(six.GetValues(), testing::ElementsAre(1, 2, 3, 0, 0, 0));
    nine.SetValuesByState(six);
    EXPECT_EQ(nine.GetValue(Robot, ARM_J3), 3);
    EXPECT_FALSE(nine.IsEqual(six, Infinity));
    EXPECT_TRUE(six.IsEqual(nine, 0));
}

TEST_F(UnequalStates, MovedFromStateHasNoValues) {
    const GrpState taker(std::move(six));
    EXPECT_FALSE(taker == six || taker.IsEqualForSimu(six) || taker.IsEqual(GrpState(), 1));
    nine.AddOtherValues(six);
    six.AddOtherValues(nine);
    EXPECT_TRUE(six.GetValues().empty() && six.GetValues(Robot).empty());
    EXPECT_THROW(six.SetValue(Robot, 0, 1), std::out_of_range);
    EXPECT_THROW(InterpolationScalePts(six, nine, 1), std::invalid_argument);
}

TEST_F(UnequalStates, PlacesOutsideAStateAndPairsOfTwoSizesAreRefused) {
    const std::vector<double> steps(9, 1);
    EXPECT_THROW(nine.SetValue(Pedestal, 3, 1), std::out_of_range);
    EXPECT_THROW(nine.GetValue(static_cast<EntityName>(-9), ARM_J1), std::out_of_range);
    EXPECT_THAT(Thrown([&] { InterpolationPts(nine, six, steps); }), HasSubstr("of one"));
    EXPECT_THAT(Thrown([&] { InterpolationPts(six, nine, {1}); }), HasSubstr("1 steps, expected 6"));
    GrpConfig::GetCoupledValue(System).enabled = true;
    GrpConfig::GetCoupledValue(System).index[0] = 1;
    GrpConfig::GetCoupledValue(System).index[1] = -5;
    EXPECT_THROW(nine.GetValuesCoupling(), std::out_of_range);
}

TEST_F(UnequalStates, DocumentOfALargerSystemChangesTheLayoutAndKeepsTheBuffer) {
    const double* const buffer = six.GetValuesPtr();
    EXPECT_TRUE(six.FromJson(nine.ToJson()));
    EXPECT_EQ(six.GetSystem(), System);
    EXPECT_EQ(six.GetContextDof(), 9);
    EXPECT_EQ(six.GetValuesPtr(), buffer);
    six.SetValues(std::vector<double>(9, 4));
    EXPECT_EQ(GrpState(six).GetValues(), std::vector<double>(6, 4));
    EXPECT_TRUE(six.GetValues(Pedestal).empty());
    EXPECT_EQ(six.ToJson()["J_value"].size(), 6U);
    EXPECT_THROW(six.GetValue(Pedestal, Gantry_X1), std::out_of_range);
    EXPECT_FALSE(nine == six || nine.IsEqual(six, Infinity));
    EXPECT_THROW(InterpolationScalePts(six, nine, 1), std::invalid_argument);
    six = GrpState(System + 1); // releases the buffer while the layouts exist
}

} // namespace
