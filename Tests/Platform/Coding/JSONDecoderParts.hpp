#pragma once

/// @file
/// What tests of the JSON decoder share.

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include <string>
#include <string_view>

namespace orrenby::testing {

/// Decoded and encoded by the names of its fields.
struct Point {
    double latitude = 0;
    double longitude = 0;
};

template <class T> T decoded(std::string_view text) { return JSONDecoder().decode<T>(text); }

template <class T> std::string failure(std::string_view text, const JSONDecoder& decoder = {})
{
    try {
        decoder.decode<T>(text);
        return "no failure";
    } catch (const DecodingError& error) {
        return error.description();
    }
}

} // namespace orrenby::testing
