#pragma once

#include <cmath>
#include <gmock/gmock.h>
#include <gp_Trsf.hxx>

/// Largest difference between two rigid transforms: translation in mm, rotation in matrix entries.
struct TrsfDifference {
    double translation = 0;
    double rotation = 0;

    TrsfDifference(const gp_Trsf& a, const gp_Trsf& b) {
        for (int row = 1; row <= 3; ++row) {
            translation = std::max(translation, std::abs(a.Value(row, 4) - b.Value(row, 4)));
            for (int col = 1; col <= 3; ++col) {
                rotation = std::max(rotation, std::abs(a.Value(row, col) - b.Value(row, col)));
            }
        }
    }
};

/// Matches a transform within `mm` and, for rotation entries, `entries`; prints by how much it missed.
MATCHER_P3(IsTrsf, expected, mm, entries, "") {
    const TrsfDifference difference(arg, expected);
    *result_listener << "off by " << difference.translation << " mm and " << difference.rotation
                     << " in rotation entries";
    return difference.translation <= mm && difference.rotation <= entries;
}

/// Matches a transform but for the rounding of a few products of unit rotations over metres.
inline auto IsTrsf(const gp_Trsf& expected) { return IsTrsf(expected, 1e-9, 1e-12); }
