#include <Standard_Failure.hxx>
#include <climits>
#include <fuzz/Documents.h>
#include <fuzz/Quiet.h>
#include <host/tools/gpHandle.h>
#include <mechanism/mechanism.h>
#include <support/Registrar.h>

// Every function of InterpHandle on numbers of any kind: a bounded answer, or a refusal.

namespace {

using namespace InterpHandle;

constexpr std::uint64_t System = 5;
/// Larger answers than this are left out: they cost time and show nothing new.
constexpr double MostParts = 2000;
/// What that comes to at most: orientations count by their own step, down to 0.0001.
constexpr std::size_t MostSamples = 20000;

double Number(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return bytes.ConsumeFloatingPoint<double>();
    case 1:
        return bytes.ConsumeIntegralInRange(-3, 3);
    default:
        return bytes.ConsumeFloatingPointInRange<double>(-100, 100);
    }
}

/// A step of any kind, made longer where it would ask for more samples than most but not for so many that
/// they are refused.
double Step(FuzzedDataProvider& bytes, double length, double most = MostParts) {
    const double step = Number(bytes);
    const double parts = std::abs(length / step);
    return parts > most && parts <= INT_MAX ? length / most : step;
}

gp_Pnt Point(FuzzedDataProvider& bytes) { return {Number(bytes), Number(bytes), Number(bytes)}; }

LocEuler Pose(FuzzedDataProvider& bytes) { return {Point(bytes), Point(bytes)}; }

GrpState State(FuzzedDataProvider& bytes) {
    GrpState state(System);
    for (int i = 0; i < state.GetContextDof(); ++i) {
        state.GetValuesPtr()[i] = Number(bytes);
    }
    state.SetLocEuler(0, Pose(bytes));
    return state;
}

double Change(const GrpState& a, const GrpState& b) {
    double change = 0;
    for (int i = 0; i < a.GetContextDof(); ++i) {
        change = std::max(change, std::abs(b.GetValuesPtr()[i] - a.GetValuesPtr()[i]));
    }
    return change;
}

std::size_t BetweenStates(FuzzedDataProvider& bytes) {
    const GrpState a = State(bytes);
    const GrpState b = State(bytes);
    const double distance = a.GetLocEuler(0).location.Distance(b.GetLocEuler(0).location);
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        return InterpolationPts(a, b, std::vector<double>(7, Step(bytes, Change(a, b)))).size();
    case 1:
        return InterpolationPtsByPosGap(a, b, Step(bytes, distance)).size();
    case 2:
        return InterpolationPtsByQuaternion(a, b, std::fmod(Number(bytes), MostParts)).size();
    default:
        return InterpolationScalePts(a, b, Number(bytes)).GetValues().size();
    }
}

std::size_t BetweenPoses(FuzzedDataProvider& bytes) {
    const LocEuler a = Pose(bytes);
    const LocEuler b = Pose(bytes);
    const double distance = a.location.Distance(b.location);
    switch (bytes.ConsumeIntegralInRange(0, 4)) {
    case 0:
        return InterpolationPts(a.location, b.location, Step(bytes, distance)).size();
    case 1:
        return InterpolationPtsByQuaternion(a, b, Step(bytes, distance)).size();
    case 2:
        return InterpolationPtsByQuaternion(a, b, Step(bytes, distance), Number(bytes)).size();
    case 3:
        return EulerByQuaternion(a.euler, b.euler, {a.location, b.location, Point(bytes)}).size();
    default:
        InterpolationScaleTrsf(gpHandle::EulerToTrsf(a), gpHandle::EulerToTrsf(b), Number(bytes));
        return InterpolationPtsByNum(a.location, b.location, bytes.ConsumeIntegralInRange(-5, 500)).size();
    }
}

std::size_t BetweenVectors(FuzzedDataProvider& bytes) {
    const std::vector<double> a = {Number(bytes), Number(bytes)};
    const std::vector<double> b = {Number(bytes), Number(bytes)};
    const double length = std::max(std::abs(b[0] - a[0]), std::abs(b[1] - a[1]));
    if (bytes.ConsumeBool()) {
        return InterpolationPtsDescartes(a, b, Step(bytes, length)).size();
    }
    std::vector<std::vector<double>> out;
    EquallyDisInterpolate({a, b}, out, Step(bytes, length));
    return out.size();
}

std::size_t AlongPath(FuzzedDataProvider& bytes) {
    std::vector<PathPose> path;
    double length = 0;
    for (int i = bytes.ConsumeIntegralInRange(0, 6); i > 0; --i) {
        path.emplace_back(Point(bytes), gp_Dir(Point(bytes).XYZ()));
        length += path.front().first.Distance(path.back().first);
    }
    // Where a path turns back on itself the kernel takes milliseconds a sample.
    constexpr double Dear = 100;
    SplineInterpolation(path, Step(bytes, 2 * length, Dear));
    return path.empty() ? 0 : SparsePathPair(path, bytes.ConsumeIntegral<int>()).size() / 2;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int quiet = Silence();
    static const Registrar cell(System, {.pedestal = 1});
    static constexpr std::size_t (*Subjects[])(FuzzedDataProvider&) = {BetweenStates, BetweenPoses,
                                                                       BetweenVectors, AlongPath};
    FuzzedDataProvider bytes(data, size);
    try {
        fuzz::Require(bytes.PickValueInArray(Subjects)(bytes) <= MostSamples);
    } catch (const std::invalid_argument&) {
    } catch (const Standard_Failure&) {
    }
    return quiet;
}
