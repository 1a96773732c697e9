#pragma once

#include <host/tools/LogUtils.h>
#include <spdlog/logger.h>

/// Refusals are logged, and there are millions of them.
inline int Silence() {
    LogUtils::Logger()->sinks().clear();
    return 0;
}
