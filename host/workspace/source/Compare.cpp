#include <algorithm>
#include <cmath>
#include <host/workspace/WorkSpace.h>
#include <iterator>

namespace WorkSpace {

namespace {

// Rounding of a transform after a few products; a rotation by this much has no visible effect.
constexpr double SameNumber = 1e-9;

// Numbers that are not finite equal none, so that a faulty record is computed, and reported, each time.
bool Same(double a, double b) { return std::abs(a - b) <= SameNumber; }

template <class List>
bool SameList(const List& a, const List& b) {
    return std::equal(std::begin(a), std::end(a), std::begin(b), std::end(b), Same);
}

bool SameTable(const Robot& a, const Robot& b) {
    return std::equal(a.dh.begin(), a.dh.end(), b.dh.begin(), b.dh.end(),
                      [](const auto& rowA, const auto& rowB) { return SameList(rowA, rowB); });
}

// A plain robot's envelope depends on the arm alone; a box also depends on the placement in the cell.
bool SameMounting(const Robot& a, const Robot& b) {
    return a.upright == b.upright && SameList(a.base, b.base) &&
           std::equal(std::begin(a.externalLimits), std::end(a.externalLimits), std::begin(b.externalLimits),
                      [](const auto& rangeA, const auto& rangeB) { return SameList(rangeA, rangeB); });
}

} // namespace

bool IsEuqal(const Robot& a, const Robot& b) {
    return a.systemType == b.systemType && a.armStructureCode == b.armStructureCode &&
           Same(a.ratio, b.ratio) && SameList(a.toolOffset, b.toolOffset) && SameTable(a, b) &&
           SameList(a.jointMin, b.jointMin) && SameList(a.jointMax, b.jointMax) &&
           (a.systemType == 0 || SameMounting(a, b));
}

} // namespace WorkSpace
