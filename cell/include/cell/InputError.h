#pragma once

#include <cell/Export.h>
#include <stdexcept>
#include <string>

namespace cell {

/// What is wrong with the input, on one line: "FILE: KEY.PATH: VALUE, expected EXPECTATION".
class CELL_EXPORT InputError : public std::runtime_error {
public:
    /// @param line a whole report.
    explicit InputError(const std::string& line);
    /// @param key path of the faulty value inside the file; empty where the file as a whole is meant.
    InputError(const std::string& file, const std::string& key, const std::string& value,
               const std::string& expected);
};

} // namespace cell
