#pragma once

/// @file
/// JSON text from and to values of any kind.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include <cstddef>
#include <span>

namespace orrenby::inline ORRENBY_ABI {

/// Reads JSON text into lists, dictionaries and what they hold, and writes such values.
///
/// For values whose types are known, `JSONDecoder` and `JSONEncoder` are faster and say what is wrong.
///
/// @snippet Tests/Platform/Coding/NSJSONSerializationTests.cpp Reading and writing untyped values
///
/// Safe to use from several threads.
class ORRENBY_EXPORT NSJSONSerialization {
public:
    /// What may be read, and how. Options combine with `|`.
    enum class ReadingOptions : unsigned {
        None = 0,
        MutableContainers = 1, ///< Without effect: what is read can always be changed.
        MutableLeaves = 2,     ///< Without effect.
        FragmentsAllowed = 4   ///< The text may be a number, a string, a boolean or null.
    };

    /// How it is written. Options combine with `|`.
    enum class WritingOptions : unsigned {
        None = 0,
        PrettyPrinted = 1,
        SortedKeys = 2,
        FragmentsAllowed = 4,
        WithoutEscapingSlashes = 8 ///< Without effect: slashes are never escaped.
    };

    /// The value of a JSON text in UTF-8, UTF-16 or UTF-32.
    ///
    /// Objects become a `Dictionary` in their order, lists an `Array`, null the null value. Numbers are
    /// marked as read from a text (`Any::parsedNumber`): an `Int` when they are exactly one, `1.0` included,
    /// or are rounded to one, else the nearest `double`. Integers above 2^63 − 1 that fit are an
    /// `std::uint64_t`. `-0.0` stays a `double`.
    ///
    /// Throws `JSONReadError`, and `DecodingError` with the path of a number that is too large for a
    /// `double`.
    static Any JSONObjectWithData(
        std::span<const std::byte> data, ReadingOptions options = ReadingOptions::None);
    static Result<Any, AnyError> tryJSONObjectWithData(
        std::span<const std::byte> data, ReadingOptions options = ReadingOptions::None);

    /// JSON text in UTF-8. Throws `EncodingError` with the path of what JSON cannot hold: numbers that are
    /// not finite, text that is not valid UTF-8, more than 512 nested values, other kinds.
    static Data dataWithJSONObject(const Any& value, WritingOptions options = WritingOptions::None);
    static Result<Data, AnyError> tryDataWithJSONObject(
        const Any& value, WritingOptions options = WritingOptions::None);

    /// Whether this is a list or a dictionary that can be written. Linear.
    static bool isValidJSONObject(const Any& value);
};

/// All that is in one of the two.
constexpr NSJSONSerialization::ReadingOptions operator|(
    NSJSONSerialization::ReadingOptions first, NSJSONSerialization::ReadingOptions second) noexcept
{
    return static_cast<NSJSONSerialization::ReadingOptions>(
        static_cast<unsigned>(first) | static_cast<unsigned>(second));
}

/// All that is in one of the two.
constexpr NSJSONSerialization::WritingOptions operator|(
    NSJSONSerialization::WritingOptions first, NSJSONSerialization::WritingOptions second) noexcept
{
    return static_cast<NSJSONSerialization::WritingOptions>(
        static_cast<unsigned>(first) | static_cast<unsigned>(second));
}

} // namespace orrenby
