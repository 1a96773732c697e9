#pragma once

#include <host/view/BaseViewShape.h>

class gp_Ax2;

namespace ViewShapeUtil {

/// An axis triad: three arrows of the given length (mm) along X (red), Y (green) and Z (blue) of the frame,
/// and a small ball at its origin.
/// @throws std::invalid_argument for a size below 1.
opencascade::handle<BaseViewShape> GenDirModel(const gp_Ax2& frame, int size);

} // namespace ViewShapeUtil
