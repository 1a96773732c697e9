#pragma once

#include <gp_Trsf.hxx>
#include <mechanism/RobotEntity.h>

namespace mechanism_detail {

/// Indices of the four numbers in a row.
enum DhColumn : std::size_t { DhA = 0, DhAlpha = 1, DhD = 2, DhTheta = 3 };

/// Modified (proximal) convention: RotX(alpha) * TransX(a) * RotZ(theta) * TransZ(d).
gp_Trsf DhToTrsf(const RobotEntity::DhRow& row);

} // namespace mechanism_detail
