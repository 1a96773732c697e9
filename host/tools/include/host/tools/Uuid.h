#pragma once

#include <array>
#include <cstdint>
#include <string>

/// A 128-bit identifier and its text form (8-4-4-4-12 lower-case hexadecimal digits).
/// The default is the nil identifier with an empty text.
struct Uuid {
    std::array<std::uint8_t, 16> value{}; ///< the 16 bytes, in the order of the text
    std::string text;                     ///< the text form, or empty for the nil identifier

    /// An identifier that no call has given before; the built-in host's are random (version 4).
    static Uuid CreateUuid();

    /// @param text an identifier in any letter case; the empty text gives the nil identifier.
    /// @throws std::invalid_argument naming the text when it is neither.
    static Uuid FromString(std::string text);

    /// The text form; empty for the nil identifier.
    std::string ToString() const;

    /// Equal when all 128 bits are; the texts are not compared.
    friend bool operator==(const Uuid& a, const Uuid& b) { return a.value == b.value; }
};
