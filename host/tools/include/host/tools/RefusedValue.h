#pragma once

#include <stdexcept>
#include <string>

/// A value of a document that a reader turned away: what() is "KEY: VALUE, expected EXPECTATION".
class RefusedValue : public std::invalid_argument {
public:
    /// @param key path of the value in the document. @param shown the value as text.
    RefusedValue(const std::string& key_, const std::string& shown_, const std::string& expected_)
        : std::invalid_argument(key_ + ": " + shown_ + ", expected " + expected_), key(key_), shown(shown_),
          expected(expected_) {}

    const std::string& Key() const { return key; }
    const std::string& Shown() const { return shown; }
    const std::string& Expected() const { return expected; }
    /// The same value, named from further out in the document.
    RefusedValue Inside(const std::string& outer) const { return {outer + "." + key, shown, expected}; }

private:
    std::string key, shown, expected;
};
