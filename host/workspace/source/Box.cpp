#include "Outline.h"

#include <algorithm>
#include <cmath>

namespace WorkSpace {

namespace {

constexpr double CellShare = 0.01;
constexpr double StepShare = 0.04;
/// Number of wrist positions that are tried; every place of the box needs one of them.
constexpr std::size_t WristCount = 100;

struct Run {
    int first = 0, last = -1; // columns, both included
    int Width() const { return last - first + 1; }
};

struct Box {
    double volume = 0;
    std::array<double, 6> corners{};

    void Take(double x, double y0, double y1, double z0, double z1) {
        const double found = 2 * x * (y1 - y0) * (z1 - z0);
        if (x > 0 && y1 > y0 && found > volume) {
            volume = found;
            corners = {-x, y0, z0, x, y1, z1};
        }
    }
};

// The half width of greatest area for a box between two radii beside the axis.
void TakeBeside(double inner, double outer, double z0, double z1, Box& box) {
    constexpr int Tries = 32;
    for (int i = 1; i < Tries; ++i) {
        const double x = outer * i / Tries;
        box.Take(x, inner, std::sqrt(outer * outer - x * x), z0, z1);
    }
}

void TakeAround(double outer, double z0, double z1, Box& box) {
    const double half = outer * std::sqrt(0.5);
    box.Take(half, -half, half, z0, z1);
}

// Cells that some wrist position reaches, no farther from the shoulder than `ratio` of the stretched arm.
class GoodCells {
public:
    GoodCells(const Robot& robot, const Arm& arm)
        : shoulder(arm.Shoulder()), length(arm.StretchedLength()),
          raster(CellShare * length, std::hypot(std::abs(shoulder.x) + length, length), shoulder.z - length,
                 shoulder.z + length) {
        ArmSweep sweep(arm, StepShare * length);
        const std::vector<Vec> places = WristNet(arm, CellShare * length).places;
        const std::size_t step = places.size() / WristCount + 1;
        for (std::size_t i = 0; i < places.size(); i += step) {
            sweep.MarkRegion(places[i], raster);
        }
        for (int row = 0; row < raster.Rows(); ++row) {
            for (int column = 0; column < raster.Columns(); ++column) {
                good.push_back(raster.At(column, row) && FarthestCorner(column, row) <= robot.ratio * length);
            }
        }
    }

    int Rows() const { return raster.Rows(); }
    SectionPoint Corner(int column, int row) const { return raster.Corner(column, row); }

    // The widest run of usable cells in a row that lies within `common`.
    Run Narrowed(const Run& common, int row) const {
        Run widest;
        Run run;
        for (int column = common.first; column <= common.last; ++column) {
            if (!Good(column, row)) {
                run = Run{};
                continue;
            }
            run = run.Width() > 0 ? Run{run.first, column} : Run{column, column};
            widest = run.Width() > widest.Width() ? run : widest;
        }
        return widest;
    }
    Run WholeRow() const { return {0, raster.Columns() - 1}; }

private:
    bool Good(int column, int row) const {
        return good[static_cast<std::size_t>(row) * static_cast<std::size_t>(raster.Columns()) +
                    static_cast<std::size_t>(column)];
    }
    // Distance of a cell from the shoulder.
    double FarthestCorner(int column, int row) const {
        double distance = 0;
        for (const int right : {0, 1}) {
            for (const int up : {0, 1}) {
                const SectionPoint corner = raster.Corner(column + right, row + up);
                distance =
                    std::max(distance, std::hypot(corner.r - std::abs(shoulder.x), corner.z - shoulder.z));
            }
        }
        return distance;
    }

    Vec shoulder;
    double length;
    Raster raster;
    std::vector<bool> good;
};

// Boxes of every height, each as wide as the run of usable cells that all its rows share.
Box LargestBox(const GoodCells& cells, bool around) {
    Box box;
    for (int bottom = 0; bottom < cells.Rows(); ++bottom) {
        Run run = cells.WholeRow();
        for (int top = bottom; top < cells.Rows(); ++top) {
            run = cells.Narrowed(run, top);
            if (run.Width() == 0) {
                break;
            }
            const double z0 = cells.Corner(0, bottom).z;
            const double z1 = cells.Corner(0, top + 1).z;
            const double outer = cells.Corner(run.last + 1, 0).r;
            if (!around) {
                TakeBeside(cells.Corner(run.first, 0).r, outer, z0, z1, box);
            } else if (run.first == 0) {
                TakeAround(outer, z0, z1, box);
            }
        }
    }
    return box;
}

} // namespace

std::array<double, 6> GetInvertedRobotWorkSpace(const Robot& robot) {
    const Arm arm(robot);
    const GoodCells cells(robot, arm);
    const Box beside = LargestBox(cells, false);
    const Box around = robot.upright ? Box() : LargestBox(cells, true);
    return around.volume > beside.volume ? around.corners : beside.corners;
}

} // namespace WorkSpace
