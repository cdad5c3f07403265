#pragma once

/// @file
/// Types that know under which key they stand in a response.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"
#include <concepts>

namespace orrenby::inline ORRENBY_ABI {

/// A decodable type with a static function `serviceKey()`, which gives the key of its member in a response.
///
/// @snippet Tests/Utilities/ServiceDecoder/ServiceDecodableTests.cpp Registering a type with a key of its own
template <class T>
concept ServiceDecodable = DecodableType<T> && requires
{
    {
        T::serviceKey()
        } -> std::convertible_to<ServiceKey>;
};

} // namespace orrenby
