#pragma once

#include "SeamSearch.h"

namespace planning {

/// Why a seam has no way.
NoWay Explain(const SeamSearch& search, const SeamRungs& rungs, const std::vector<SeamPose>& poses);

} // namespace planning
