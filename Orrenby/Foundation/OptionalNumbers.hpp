#pragma once

/// @file
/// Reading numbers that may be absent.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI {

/// Whether the number differs from zero; false when there is none.
///
/// A number is a boolean, an integer or a floating number of any width, or an optional that holds one. Null,
/// an empty optional and whatever is no number, digits in a text included, count as absent.
///
/// @snippet Tests/Foundation/OptionalNumbersTests.cpp Reading what may be absent
///
/// These four read any kind of number as any other, unlike `Any::cast`. Safe to use from several threads.
ORRENBY_EXPORT bool boolValue(const Any& number);

/// The number cut to an integer, or the nearest one that fits; 0 when there is none, and for what is no
/// number ("NaN"). True is 1.
ORRENBY_EXPORT std::int64_t intValue(const Any& number);

/// The number in 32 bits, infinite when it is too large; 0 when there is none.
ORRENBY_EXPORT float floatValue(const Any& number);

/// The number in 64 bits; 0 when there is none.
ORRENBY_EXPORT double doubleValue(const Any& number);

} // namespace orrenby
