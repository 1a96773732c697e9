#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace WorkSpace {

/// A place in the section: radius from joint 1's axis (never negative) and height, mm.
struct SectionPoint {
    double r, z;
};

/// A raster of the section with the reached cells marked. Joint 1's axis is the left edge of the first
/// column; on the other three sides there is a margin that stays free.
class Raster {
public:
    /// @param cellWidth, radius, bottom, top size of a cell, and the area that the raster must cover; mm.
    Raster(double cellWidth, double radius, double bottom, double top);

    void Mark(const SectionPoint& point) { cells[Index(point)] = 1; }
    /// Marks a line without gaps: no path across cell edges leads through it.
    void MarkLine(const SectionPoint& a, const SectionPoint& b);
    /// Marks the cells whose centres lie in the triangle.
    void MarkTriangle(const SectionPoint& a, const SectionPoint& b, const SectionPoint& c);
    /// Computes how deep inside the marked cells each one lies, for Depth.
    void MeasureDepth();
    /// A lower bound (mm) of the distance from the point to the nearest cell that is not marked.
    double Depth(const SectionPoint& point) const { return depths[Index(point)] * depthUnit; }
    /// Marks everything that no path connects with the margin, and joins cells that touch at a corner alone.
    /// @param bridged gaps of up to twice as many cells count as closed: 0, 1 or 2.
    void Fill(int bridged);

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
    std::size_t Index(const SectionPoint& point) const {
        const int column = std::clamp(static_cast<int>(point.r * perCell), 0, columns - Margin);
        const int row = std::clamp(static_cast<int>((point.z - low) * perCell), 1, rows - Margin);
        return Index(column, row);
    }
    void Grow(std::uint8_t what, int by);
    void JoinCorners();

    static constexpr int Margin = 4;

    double cell;
    double perCell; ///< its reciprocal
    double depthUnit;
    double low;
    int columns;
    int rows;
    std::vector<std::uint8_t> cells;
    std::vector<std::uint16_t> depths; ///< in steps along rows and columns to the nearest free cell, less two
};

} // namespace WorkSpace
