#pragma once

#include <spdlog/common.h>
#include <string>

/// Error reporting of the library: the one place that defines log records and thrown texts.
namespace mechanism_detail {

/// The family names that records carry as their source file. String literals, because an asynchronous sink
/// reads them after the call has returned.
namespace family {
inline constexpr const char* GrpState = "entity/mechanism/source/GrpState";
inline constexpr const char* RobotEntity = "entity/mechanism/source/RobotEntity";
inline constexpr const char* PedestalEntity = "entity/mechanism/source/PedestalEntity";
inline constexpr const char* BenchEntity = "entity/mechanism/source/BenchEntity";
inline constexpr const char* ToolEntity = "entity/mechanism/source/ToolEntity";
inline constexpr const char* RobotWorkspace = "entity/mechanism/source/RobotWorkspace";
} // namespace family

/// Writes one record.
/// @param source one of the family names. @param line the caller's __LINE__.
/// @param function the qualified name, a literal such as "RobotEntity::GetAxis".
void Log(spdlog::level::level_enum level, const char* source, int line, const char* function,
         const std::string& message);

/// Logs the message at critical, then throws.
/// @throws std::string always: the family name without its first `line` characters, then the function name,
/// then the message. A catcher shows the end of the text.
[[noreturn]] void Fail(const char* source, int line, const char* function, const std::string& message);

} // namespace mechanism_detail
