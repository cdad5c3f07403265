#pragma once

/// @file
/// Encodable values as dictionaries.

#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Standard/JSON/JSONAccess.hpp"
#include "Orrenby/Standard/JSON/JSONSerializable.hpp"
#include "Orrenby/Standard/NestedError.hpp"
#include <exception>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// A value was encoded as something other than a JSON object, so that it has no dictionary.
///
/// A plain value without content. Not synchronised.
class ORRENBY_EXPORT InvalidJSONTypeError final : public GlobalError<InvalidJSONTypeError> {
public:
    /// Always 1: there is one kind.
    std::int64_t code() const noexcept { return 1; }

    /// `invalidType`
    std::string description() const override;

    friend bool operator==(const InvalidJSONTypeError&, const InvalidJSONTypeError&) = default;
};

namespace detail {

/// Throws `InvalidJSONTypeError` and what the reader throws.
ORRENBY_EXPORT Dictionary dictionaryOfEncoded(const Data& data);

[[noreturn]] ORRENBY_EXPORT void failToEncode(const AnyError& error, const std::string& typeName) noexcept;

template <class T>
concept EncodedAsJSON = !ReflectedAsJSON<T>;

} // namespace detail

/// The value as `JSONEncoder` with default settings encodes it, read back: members by their coding keys,
/// dates and bytes in the encoder's form, numbers as numbers that were read from a text.
///
/// A value that cannot be encoded, or is not encoded as a JSON object, is a programming error and ends the
/// process: `JSONSerialization Error: invalidType for: Int`. Use `tryJSON` where the value comes from
/// outside.
///
/// A `JSONSerializable` is not encoded but reflected: see JSONReflection.hpp.
///
/// @snippet Tests/Standard/JSON/EncodableJSONTests.cpp Encoding into a dictionary
///
/// Costs writing and reading the JSON text. Not synchronised.
template <detail::EncodedAsJSON T> Dictionary json(const T& value)
{
    try {
        return detail::dictionaryOfEncoded(JSONEncoder().encode(value));
    } catch (...) {
        detail::failToEncode(AnyError(std::current_exception()), typeName(value));
    }
}

/// As `json`, but a value that has no dictionary is a failure: `EncodingError`, `InvalidJSONTypeError`, or
/// what a type's own `encode` throws. Throws nothing.
template <detail::EncodedAsJSON T> Result<Dictionary, AnyError> tryJSON(const T& value)
{
    return detail::outcomeOf([&] { return detail::dictionaryOfEncoded(JSONEncoder().encode(value)); });
}

} // namespace orrenby
