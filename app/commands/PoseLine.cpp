#include <algorithm>
#include <app/commands/PoseLine.h>
#include <cell/InputError.h>
#include <cmath>
#include <gp_Trsf.hxx>
#include <json/reader.h>
#include <json/writer.h>
#include <memory>

namespace cell {

namespace {

/// Rotations that were written with seven digits or more are taken, and made orthonormal.
constexpr double RotationTolerance = 1e-6;

std::string Shown(const Json::Value& json) {
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    return Json::writeString(writer, json);
}

const Json::Value& Require(const Json::Value& line, const std::string& key, const std::string& place) {
    if (!line.isMember(key)) {
        throw InputError(place, key, "missing", "this key");
    }
    return line[key];
}

std::vector<double> ReadNumbers(const Json::Value& json, const std::string& key, const std::string& place) {
    std::vector<double> numbers;
    const auto isNumber = [](const Json::Value& item) {
        return item.isNumeric() && std::isfinite(item.asDouble());
    };
    if (!json.isArray() || !std::all_of(json.begin(), json.end(), isNumber)) {
        throw InputError(place, key, Shown(json), "finite numbers");
    }
    for (const Json::Value& item : json) {
        numbers.push_back(item.asDouble());
    }
    return numbers;
}

std::vector<double> ReadTriple(const Json::Value& json, const std::string& key, const std::string& place) {
    std::vector<double> numbers = ReadNumbers(json, key, place);
    if (numbers.size() != 3) {
        throw InputError(place, key, std::to_string(numbers.size()) + " numbers", "3");
    }
    return numbers;
}

bool IsRotation(const double* r) {
    const auto row = [&](int i) { return gp_XYZ(r[3 * i], r[3 * i + 1], r[3 * i + 2]); };
    for (int i = 0; i < 3; ++i) {
        const bool unit = std::abs(row(i).SquareModulus() - 1) <= RotationTolerance;
        if (!unit || !(std::abs(row(i).Dot(row((i + 1) % 3))) <= RotationTolerance)) {
            return false;
        }
    }
    return row(0).Crossed(row(1)).Dot(row(2)) > 0;
}

} // namespace

Json::Value ParseLine(const std::string& line, const std::string& place) {
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    Json::Value json;
    bool parsed = false;
    try {
        const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
        parsed = reader->parse(line.data(), line.data() + line.size(), &json, nullptr);
    } catch (const Json::Exception&) {
        parsed = false; // nested deeper than the parser goes
    }
    if (!parsed || !json.isObject()) {
        throw InputError(place, "", line, "one JSON object");
    }
    return json;
}

Rigid ReadPose(const Json::Value& line, const std::string& frame, const std::string& place) {
    const std::string originKey = frame + "_origin_mm";
    const std::string rotationKey = frame + "_rotation";
    Rigid pose;
    std::ranges::copy(ReadTriple(Require(line, originKey, place), originKey, place), pose.p);
    const Json::Value& rows = Require(line, rotationKey, place);
    if (!rows.isArray() || rows.size() != 3) {
        throw InputError(place, rotationKey, Shown(rows), "3 rows of 3 numbers");
    }
    for (Json::ArrayIndex i = 0; i < 3; ++i) {
        const std::string key = rotationKey + "[" + std::to_string(i) + "]";
        std::ranges::copy(ReadTriple(rows[i], key, place), pose.r + std::size_t{3} * i);
    }
    if (!IsRotation(pose.r)) {
        throw InputError(place, rotationKey, Shown(rows),
                         "a rotation: rows of length 1, square to each other, right-handed");
    }
    gp_Trsf orthonormal;
    const double* r = pose.r;
    orthonormal.SetValues(r[0], r[1], r[2], pose.p[0], r[3], r[4], r[5], pose.p[1], r[6], r[7], r[8],
                          pose.p[2]);
    return Rigid::From(orthonormal);
}

std::vector<std::vector<double>> ReadSolutions(const Json::Value& line, const std::string& place) {
    const Json::Value& solutions = Require(line, "solutions", place);
    if (!solutions.isArray()) {
        throw InputError(place, "solutions", Shown(solutions), "a list");
    }
    std::vector<std::vector<double>> sets;
    for (Json::ArrayIndex i = 0; i < solutions.size(); ++i) {
        const std::string key = "solutions[" + std::to_string(i) + "]";
        if (!solutions[i].isObject()) {
            throw InputError(place, key, Shown(solutions[i]), "an object");
        }
        sets.push_back(ReadNumbers(Require(solutions[i], "values_deg", place), key + ".values_deg", place));
    }
    return sets;
}

} // namespace cell
