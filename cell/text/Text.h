#pragma once

#include <host/tools/TextHandle.h>
#include <json/forwards.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Numbers as text, the same in every locale.
namespace cell {

using TextHandle::Shortest;
/// Rounded to some decimals, without trailing zeros or a minus before nothing.
std::string Rounded(double number, int decimals);
/// An angle (rad) in degrees to ten decimals: what a file says comes out as the file said it.
std::string Degrees(double radians);
/// The text padded with blanks on the left (right-aligned) to a width.
std::string Padded(const std::string& text, std::size_t width);
/// "x y z" of a position (mm), or of three numbers, to some decimals.
std::string Spaced(const std::vector<double>& numbers, int decimals);

/// A JSON document with the digits that carry every number there and back, and a line end.
std::string JsonText(const Json::Value& json);

/// The same on one line, without a line end.
std::string JsonLine(const Json::Value& json);

/// Numbers separated by commas or blanks; nothing where any part is no finite number.
std::optional<std::vector<double>> ParseNumbers(std::string_view text);

} // namespace cell
