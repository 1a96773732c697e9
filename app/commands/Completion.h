#pragma once

#include <iosfwd>

namespace CLI {
class App;
}

namespace cell {

/// Prints a completion script for bash, made from the sub-commands and options that the program has.
void PrintCompletion(const CLI::App& app, std::ostream& out);

} // namespace cell
