#include <host/tools/LogUtils.h>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

namespace {

/// The logger passes every level, so that a sink added later receives all records; its own sink writes
/// warnings and worse.
std::shared_ptr<spdlog::logger> MakeLogger() {
    auto sink = std::make_shared<spdlog::sinks::stderr_sink_mt>();
    sink->set_level(spdlog::level::warn);
    auto logger = std::make_shared<spdlog::logger>(LogUtils::LoggerName, std::move(sink));
    logger->set_level(spdlog::level::trace);
    return logger;
}

std::shared_ptr<spdlog::logger> FindOrRegister() {
    if (auto supplied = spdlog::get(LogUtils::LoggerName)) {
        return supplied;
    }
    auto made = MakeLogger();
    try {
        spdlog::register_logger(made);
    } catch (const spdlog::spdlog_ex&) {
        // The host registered a logger between the two calls: use that one.
        if (auto supplied = spdlog::get(LogUtils::LoggerName)) {
            return supplied;
        }
    }
    return made;
}

} // namespace

std::shared_ptr<spdlog::logger> LogUtils::Logger() {
    static const std::shared_ptr<spdlog::logger> logger = FindOrRegister();
    return logger;
}

void LogUtils::LogWrite(const spdlog::source_loc& where, spdlog::level::level_enum level,
                        const std::string& text) {
    Logger()->log(where, level, spdlog::string_view_t(text));
}
