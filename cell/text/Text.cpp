#include <array>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <charconv>
#include <cmath>
#include <json/writer.h>

namespace cell {

namespace {

constexpr int DegreeDecimals = 10;
constexpr int RoundTripDigits = 17;
/// Longest fixed form of a double with a dozen decimals.
constexpr std::size_t LongestNumber = 352;
constexpr std::string_view Separators = ", \t\r";

std::optional<double> ParseNumber(std::string_view text) {
    double number = 0;
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

} // namespace

std::string Rounded(double number, int decimals) {
    std::array<char, LongestNumber> buffer;
    char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                    std::chars_format::fixed, decimals)
                          .ptr;
    std::string text(buffer.data(), end);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.ends_with('.') ? text.size() - 1 : text.size());
    }
    return text == "-0" ? "0" : text;
}

std::string Degrees(double radians) { return Rounded(radians / RadiansPerDegree, DegreeDecimals); }

std::string Padded(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string Spaced(const std::vector<double>& numbers, int decimals) {
    std::string text;
    for (const double number : numbers) {
        text += (text.empty() ? "" : " ") + Rounded(number, decimals);
    }
    return text;
}

std::string JsonText(const Json::Value& json) {
    Json::StreamWriterBuilder writer;
    writer["indentation"] = " ";
    writer["precision"] = RoundTripDigits;
    writer["emitUTF8"] = true;
    return Json::writeString(writer, json) + "\n";
}

std::string JsonLine(const Json::Value& json) {
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    writer["precision"] = RoundTripDigits;
    return Json::writeString(writer, json);
}

std::optional<std::vector<double>> ParseNumbers(std::string_view text) {
    std::vector<double> numbers;
    while (true) {
        const std::size_t begin = text.find_first_not_of(Separators);
        if (begin == std::string_view::npos) {
            return numbers;
        }
        text.remove_prefix(begin);
        const std::string_view token = text.substr(0, text.find_first_of(Separators));
        const auto number = ParseNumber(token);
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
        text.remove_prefix(token.size());
    }
}

} // namespace cell
