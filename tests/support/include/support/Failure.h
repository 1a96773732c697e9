#pragma once

#include <gmock/gmock.h>
#include <support/LogCapture.h>
#include <support/Thrown.h>

/// Runs a call that must fail, checks the end of the thrown text and the one record, and gives the line that
/// the record names.
template <class Call>
int ExpectFailure(Call call, const std::string& family, const std::string& function,
                  const std::string& message) {
    const LogCapture log;
    EXPECT_THAT(Thrown(call), testing::EndsWith(function + message));
    EXPECT_EQ(log.Records().size(), 1U);
    const LogRecord record = log.Records().at(0);
    EXPECT_EQ(record.level, spdlog::level::critical);
    EXPECT_EQ(record.text, message);
    EXPECT_EQ(record.function, function);
    EXPECT_EQ(record.file, "entity/mechanism/source/" + family);
    return record.line;
}
