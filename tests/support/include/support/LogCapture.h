#pragma once

#include <host/tools/LogUtils.h>
#include <mutex>
#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>
#include <vector>

struct LogRecord {
    spdlog::level::level_enum level;
    std::string text, function, file;
    int line;
};

/// Records what the library and the host log during its lifetime.
class LogCapture {
public:
    LogCapture() { LogUtils::Logger()->sinks().push_back(sink); }
    ~LogCapture() { std::erase(LogUtils::Logger()->sinks(), spdlog::sink_ptr(sink)); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    const std::vector<LogRecord>& Records() const { return sink->records; }

private:
    struct Sink : spdlog::sinks::base_sink<std::mutex> {
        std::vector<LogRecord> records;

        void sink_it_(const spdlog::details::log_msg& msg) override {
            const auto text = [](const char* literal) { return std::string(literal ? literal : ""); };
            records.push_back({msg.level, std::string(msg.payload.data(), msg.payload.size()),
                               text(msg.source.funcname), text(msg.source.filename), msg.source.line});
        }
        void flush_() override {}
    };
    std::shared_ptr<Sink> sink = std::make_shared<Sink>();
};
