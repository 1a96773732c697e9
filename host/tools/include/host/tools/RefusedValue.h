#pragma once

#include <stdexcept>
#include <string>

/// A value of a document that a reader refused: what() is "KEY: VALUE, expected EXPECTATION".
class RefusedValue : public std::invalid_argument {
public:
    /// @param key_ path of the value in the document. @param shown_ the value as text.
    /// @param expected_ what would have been accepted.
    RefusedValue(const std::string& key_, const std::string& shown_, const std::string& expected_)
        : std::invalid_argument(key_ + ": " + shown_ + ", expected " + expected_), key(key_), shown(shown_),
          expected(expected_) {}

    /// Path of the value in the document.
    const std::string& Key() const { return key; }
    /// The value as text.
    const std::string& Shown() const { return shown; }
    /// What would have been accepted.
    const std::string& Expected() const { return expected; }
    /// The same refusal with the key prefixed: "OUTER.KEY".
    RefusedValue Inside(const std::string& outer) const { return {outer + "." + key, shown, expected}; }

private:
    std::string key, shown, expected;
};
