#pragma once

#include <cmath>
#include <gmock/gmock.h>
#include <gp_Trsf.hxx>

/// Matches a rigid transform within `mm` and, for rotation entries, `entries`; prints by how much it missed.
MATCHER_P3(IsTrsf, expected, mm, entries, "") {
    double translation = 0;
    double rotation = 0;
    bool isWithin = true; // apart from the largest, which no NaN is
    for (int row = 1; row <= 3; ++row) {
        for (int col = 1; col <= 4; ++col) {
            double& largest = col == 4 ? translation : rotation;
            const double off = std::abs(arg.Value(row, col) - expected.Value(row, col));
            isWithin = isWithin && off <= (col == 4 ? mm : entries);
            largest = std::max(largest, off);
        }
    }
    *result_listener << "off by " << translation << " mm and " << rotation << " in rotation entries";
    return isWithin;
}

/// Matches a transform but for the rounding of a few products of unit rotations over metres.
inline auto IsTrsf(const gp_Trsf& expected) { return IsTrsf(expected, 1e-9, 1e-12); }
