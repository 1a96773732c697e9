#include <host/tools/LogUtils.h>

#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

// A logger that keeps quiet until somebody adds a sink, in place of one that writes to standard error.

std::shared_ptr<spdlog::logger> LogUtils::Logger() {
    static const auto logger = [] {
        auto found = spdlog::get(LoggerName);
        if (!found) {
            found =
                std::make_shared<spdlog::logger>(LoggerName, std::make_shared<spdlog::sinks::null_sink_mt>());
            found->set_level(spdlog::level::trace);
            spdlog::register_logger(found);
        }
        return found;
    }();
    return logger;
}

void LogUtils::LogWrite(const spdlog::source_loc& where, spdlog::level::level_enum level,
                        const std::string& text) {
    Logger()->log(where, level, spdlog::string_view_t(text));
}
