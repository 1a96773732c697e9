#include <host/tools/NozzleParam.h>

#include <cmath>
#include <host/tools/DataHandle.h>
#include <json/value.h>
#include <limits>
#include <stdexcept>

namespace {

constexpr double DefaultStickOut = 15.0;
/// Largest length, mm: larger solids take minutes to mesh.
constexpr double LongestLength = 1e4;

/// A number of the document: the member that it sets, and its bounds.
struct Field {
    const char* key;
    double NozzleParam::*member;
    double above;
    double atMost;
    bool required;
};

constexpr Field Fields[] = {
    {"tip_radius", &NozzleParam::tipRadius, 0, LongestLength, true},
    {"tip_length", &NozzleParam::tipLength, 0, LongestLength, true},
    {"nozzle_radius", &NozzleParam::nozzleRadius, 0, LongestLength, true},
    {"nozzle_length", &NozzleParam::nozzleLength, 0, LongestLength, true},
    {"neck_radius", &NozzleParam::neckRadius, 0, LongestLength, true},
    {"body_radius", &NozzleParam::bodyRadius, 0, LongestLength, true},
    {"tcp_z", &NozzleParam::tcpZ, 0, LongestLength, true},
    {"tcp_x", &NozzleParam::tcpX, -LongestLength, LongestLength, true},
    {"torch_angle", &NozzleParam::torchAngle, 90, 180, true},
    {"body_length", &NozzleParam::bodyLength, 0, LongestLength, true},
    // Zero is allowed: a wire cut flush with the tip.
    {"stick_out", &NozzleParam::stickOut, -std::numeric_limits<double>::min(), LongestLength, false},
    {"guard_clearance", &NozzleParam::guardClearance, 0, LongestLength, false},
};

std::string Expectation(const Field& field) {
    std::string text = "a finite number";
    if (field.above > -1) {
        text +=
            field.above < 0 ? " of at least 0" : " above " + std::to_string(static_cast<int>(field.above));
    }
    return text + ", at most " + std::to_string(static_cast<int>(field.atMost));
}

double ReadField(const Json::Value& json, const Field& field) {
    const Json::Value& value = json[field.key];
    const double number = value.isNumeric() ? value.asDouble() : std::nan("");
    if (!std::isfinite(number) || number <= field.above || number > field.atMost) {
        DataHandle::Refuse(field.key, value, Expectation(field));
    }
    return number;
}

} // namespace

void NozzleParam::LoadFrom(const Json::Value& json) {
    if (!json.isObject()) {
        throw std::invalid_argument("nozzle: expected an object");
    }
    NozzleParam loaded = *this;
    loaded.stickOut = DefaultStickOut;
    for (const Field& field : Fields) {
        if (field.required || json.isMember(field.key)) {
            loaded.*field.member = ReadField(json, field);
        }
    }
    *this = loaded;
}
