#include <BRepPrimAPI_MakeSphere.hxx>
#include <host/workpiece/ShapeEntity.h>
#include <json/json.h>
#include <latch>
#include <support/Mechanism.h>
#include <thread>

// The stateless functions and the comparisons, from several threads at once on inputs that they share. Each
// gives its result as text, which must equal the result of a single thread. Data races are detected by the
// thread sanitizer's build.

namespace {

using namespace InterpHandle;
using PathPair = std::vector<PathPose>;
using Groups = std::vector<std::vector<std::vector<ArrayPose>>>;

constexpr std::uint64_t System = 92;
constexpr int Threads = 4;
constexpr int Rounds = 6;

/// All bits of the numbers are compared.
struct Answer {
    std::ostringstream out;

    Answer& operator<<(double number) { return out << std::hexfloat << number << ' ', *this; }
    Answer& operator<<(const gp_XYZ& xyz) { return *this << xyz.X() << xyz.Y() << xyz.Z(); }
    Answer& operator<<(const gp_Pnt& point) { return *this << point.XYZ(); }
    Answer& operator<<(const PathPose& pose) { return *this << pose.first << pose.second.XYZ(); }
    Answer& operator<<(const gp_Trsf& trsf) { return *this << gpHandle::TrsfToEuler(trsf); }
    Answer& operator<<(const LocEuler& pose) { return *this << pose.location << pose.euler; }
    Answer& operator<<(GrpState state) { return out << state.ToJson(), *this; }
    template <class T, class A>
    Answer& operator<<(const std::vector<T, A>& many) {
        for (const T& one : many) {
            *this << one;
        }
        return *this;
    }
    template <std::size_t N>
    Answer& operator<<(const std::array<double, N>& many) {
        return *this << std::vector<double>(many.begin(), many.end());
    }
};

struct SharedInputs : testing::Test {
    const Registrar registrar{System, {.pedestal = 1}};
    const GrpState a = State({0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0}, {gp_Pnt(0, 0, 3), gp_Pnt(0.1, 0.2, 0.3)});
    const GrpState b = State({1.1, -0.2, 0, 2, 0.5, 1, 90}, {gp_Pnt(0, 80, 9), gp_Pnt(1, 0.2, -2)});
    const std::vector<double> steps = std::vector<double>(7, 0.05);
    const PathPair path = {{gp_Pnt(0, 0, 50), gp::DZ()},
                           {gp_Pnt(40, 0, 50), gp_Dir(0.1, 0, 1)},
                           {gp_Pnt(60, 30, 40), gp_Dir(0, 0.2, 1)}};
    const opencascade::handle<ViewShape> face =
        new ShapeEntity(BRepPrimAPI_MakeSphere(50).Shape(), Uuid::CreateUuid());
    const Groups poses = {{{{0, 0, 51, 0, 0, 1}, {30, 0, 51, 0, 0, 1}, {0, 50, 0, 0, 0, 1}}}};

    void SetUp() override {
        GrpConfig::GetCoupledValue(System).enabled = true;
        Groups groups = poses;
        CheckPathsOnFace(groups, face, 2); // triangulates the surface
    }
    static GrpState State(const std::vector<double>& values, const LocEuler& pose) {
        GrpState state(System);
        state.SetValues(values);
        state.SetLocEuler(0, pose);
        return state;
    }
    void Interpolate(Answer& to) const {
        to << InterpolationPts(a, b, steps) << InterpolationPts({a, b, a}, steps)
           << InterpolationPts(path[0].first, path[2].first, 0.5) << InterpolationPtsByNum({1, 2}, {3, 4}, 9)
           << InterpolationPtsByPosGap(a, b, 3) << InterpolationScalePts(a, b, 0.3)
           << InterpolationPtsDescartes({0, 1}, {5, 0}, 0.1);
        std::vector<std::vector<double>> filled;
        EquallyDisInterpolate({{0}, {-2.5}, {-4.5}}, filled, 0.1);
        to << filled;
    }
    void Orient(Answer& to) const {
        const LocEuler& from = a.GetLocEuler(0);
        const LocEuler& goal = b.GetLocEuler(0);
        const gp_Trsf start = gpHandle::EulerToTrsf(from);
        to << EulerByQuaternion(from.euler, goal.euler, 20)
           << gpHandle::QuaToEuler(EulerScaleByQuaternion(from.euler, goal.euler, 0.4))
           << InterpolationPtsByQuaternion(a, b, 20.0) << InterpolationPtsByQuaternion(from, goal, 3.0)
           << InterpolationPtsByQuaternion(from, goal, 3.0, 0.05)
           << InterpolationScaleTrsf(start, gpHandle::EulerToTrsf(goal), 0.3);
    }
    void Lay(Answer& to) const {
        PathPair dense = path;
        SplineInterpolation(dense, 2);
        Groups checked = poses;
        CheckPathsOnFace(checked, face, 2);
        to << dense << SparsePathPair(dense, 3) << checked[0][0];
    }
    void Compare(Answer& to) const {
        GrpState copy(a);
        GrpState read(System);
        read.FromJson(copy.ToJson());
        std::vector<GrpState> candidates = {b, a, b};
        GrpStateUtils::SortRobotStateJ(a, candidates, 6);
        ContextState context;
        context.SetValues(System, b);
        to << (read == a) << a.IsEqual(b, 0.1) << a.IsEqualForSimu(b) << a.IsEqualForCollisonShow(copy)
           << context.IsEqual(ContextState(), 1) << candidates << copy.GetValuesCoupling()
           << GrpStateUtils::RemoveDuplicatedStates({a, a, b, a}, 0.1);
    }
    std::string All() const {
        Answer answer;
        Interpolate(answer);
        Orient(answer);
        Lay(answer);
        Compare(answer);
        return answer.out.str();
    }
};

TEST_F(SharedInputs, ConcurrentCallsGiveTheSameResults) {
    const std::string expected = All();
    std::latch start(Threads);
    std::array<int, Threads> wrong = {};
    std::vector<std::thread> threads;
    for (int& count : wrong) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            for (int round = 0; round < Rounds; ++round) {
                count += All() == expected ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(wrong, testing::Each(0));
}

} // namespace
