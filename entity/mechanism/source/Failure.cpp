#include "Failure.h"

#include <algorithm>
#include <host/tools/LogUtils.h>
#include <string_view>

namespace mechanism_detail {

void Log(spdlog::level::level_enum level, const char* source, int line, const char* function,
         const std::string& message) {
    LogUtils::LogWrite(spdlog::source_loc{source, line, function}, level, message);
}

void Fail(const char* source, int line, const char* function, const std::string& message) {
    Log(spdlog::level::critical, source, line, function, message);
    const std::string_view path = source;
    const auto skipped = std::min(path.size(), static_cast<std::size_t>(std::max(line, 0)));
    std::string text(path.substr(skipped));
    throw text.append(function).append(message);
}

} // namespace mechanism_detail
