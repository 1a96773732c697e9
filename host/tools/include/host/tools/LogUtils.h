#pragma once

#include <memory>
#include <spdlog/common.h>
#include <string>

namespace spdlog {
class logger;
}

/// Logging of the library and of the built-in host; they write no records by other means.
namespace LogUtils {

/// Name under which the logger is registered with spdlog.
inline constexpr const char* LoggerName = "mechanism";

/// The logger behind LogWrite. A host that registers a logger of that name with spdlog before the first
/// record supplies its own; otherwise one that writes warnings and worse to standard error is made.
/// spdlog's default logger and pattern are never touched.
std::shared_ptr<spdlog::logger> Logger();

/// Writes one record with the given location and level; the text is passed as it stands.
void LogWrite(const spdlog::source_loc& where, spdlog::level::level_enum level, const std::string& text);

} // namespace LogUtils
