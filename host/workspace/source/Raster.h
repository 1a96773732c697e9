#pragma once

#include <cstdint>
#include <vector>

namespace WorkSpace {

/// A place in the section: radius from joint 1's axis (never negative) and height, mm.
struct SectionPoint {
    double r, z;
};

/// Cells of a section that something reaches. The axis is the left edge of the first column; the other three
/// sides have a margin that stays free.
class Raster {
public:
    /// @param cellWidth, radius, bottom, top the cells, and what will be marked; mm.
    Raster(double cellWidth, double radius, double bottom, double top);

    void Mark(const SectionPoint& point) { cells[Index(point)] = 1; }
    /// Marks a line without gaps that a walk across cell edges could pass.
    void MarkLine(const SectionPoint& a, const SectionPoint& b);
    /// Marks the cells whose centres lie in the triangle.
    void MarkTriangle(const SectionPoint& a, const SectionPoint& b, const SectionPoint& c);
    /// Finds out which cells are farther than `depth` (mm) inside the marked ones, for Deep.
    void MeasureDepth(double depth);
    bool Deep(const SectionPoint& point) const { return deep[Index(point)] != 0; }
    /// Marks everything that cannot be walked to from the margin, and no two cells touch at a corner alone.
    void Fill();

    bool At(int column, int row) const {
        return column >= 0 && column < columns && row >= 0 && row < rows && cells[Index(column, row)] != 0;
    }
    double CellWidth() const { return cell; }
    int Columns() const { return columns; }
    int Rows() const { return rows; }
    SectionPoint Corner(double column, double row) const { return {column * cell, low + row * cell}; }

private:
    std::size_t Index(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(column);
    }
    std::size_t Index(const SectionPoint& point) const;
    void JoinCorners();

    double cell;
    double low;
    int columns;
    int rows;
    std::vector<std::uint8_t> cells;
    std::vector<std::uint8_t> deep;
};

} // namespace WorkSpace
