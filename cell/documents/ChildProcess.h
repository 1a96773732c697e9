#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace cell {

/// Work in a child process did not end with a result: it crashed, or took too much time or memory.
class ChildFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Runs work that may crash or hang in a child process of its own, which ends with this one.
/// @param work gives the bytes to hand back; it must not need other threads of this process.
/// @throws ChildFailure saying what happened ("takes more than 60 s"), InputError that `work` throws.
std::string RunInChild(const std::function<std::string()>& work, std::chrono::milliseconds limit);

} // namespace cell
