#pragma once

#include <exception>
#include <string>

/// The text that a call throws, bare or as an exception; empty when it throws nothing.
template <class Call>
std::string Thrown(Call call) try {
    call();
    return "";
} catch (const std::string& text) {
    return text;
} catch (const std::exception& error) {
    return error.what();
}
