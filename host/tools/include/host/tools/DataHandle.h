#pragma once

#include <json/forwards.h>
#include <string>

class gp_Trsf;

/// Transforms and texts as data.
namespace DataHandle {

/// Whether a document may hold the number (mm, degrees, rad): finite, and so far from overflow that products
/// of frames stay finite, which is within 1e9.
bool IsSound(double number);

/// The upper three rows of the matrix, row by row: 12 numbers, rotation entries and translation (mm).
/// Exact: reading back gives every number to the bit.
Json::Value TrsfToJsonArr(const gp_Trsf& trsf);
/// A rotation that was rounded, to six decimals or more, becomes the nearest one that is orthonormal.
/// @throws std::invalid_argument naming the element when the value is not an array of 12 finite numbers
///         whose rotation part is orthonormal and right-handed (2e-6).
gp_Trsf JsonArrToTrsf(const Json::Value& json);

/// x, y, z in mm, then the gp_Intrinsic_XYZ angles in rad.
Json::Value TrsfToJsonSix(const gp_Trsf& trsf);
/// @throws std::invalid_argument naming the element when the value is not an array of 6 finite numbers.
gp_Trsf JsonSixToTrsf(const Json::Value& json);

/// The text as UTF-8: valid UTF-8 passes unchanged, any other byte is taken as Latin-1.
std::string StringToUTF8string(const std::string& text);

/// How every reader of documents turns a value away: one shape of message.
/// @throws RefusedValue always.
[[noreturn]] void Refuse(const std::string& key, const Json::Value& value, const std::string& expected);

} // namespace DataHandle
