#pragma once

/// @file
/// JSON of any kind among typed values.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class Decoder;
class Encoder;

/// One JSON value of whatever kind: a member that differs from message to message.
///
/// | JSON | held as |
/// |---|---|
/// | object | `Dictionary` |
/// | list | `Array` |
/// | text | `std::string` |
/// | true, false | `bool` |
/// | a number that is exactly an `Int`: `1`, `1.0`, `1e3`, `-0` | `std::int64_t` |
/// | any other number | the nearest `double`, which may be a whole one |
///
/// Null is no such value, nor is anything that has a null in it: such a member is optional, or is read with
/// `NSJSONSerialization`. Numbers are held strictly: an integer is no `double`, although JSON knows no
/// difference. For that reason a `double` that is an `Int` comes back as that when it was encoded; everything
/// else that is in the table comes back as it was.
///
/// It can be made of anything, and does not look at it until it is encoded.
///
/// @snippet Tests/Utilities/JSON/AnyJSONValueTests.cpp Decoding any JSON
///
/// A value of 16 bytes that shares what it holds, and has its equality and hash. Include the coders to use
/// them. Not synchronised, but copies may live in several threads.
class ORRENBY_EXPORT AnyJSONValue {
public:
    /// Keeps the value as it is; what JSON cannot hold fails when it is encoded.
    explicit AnyJSONValue(Any value) noexcept
        : m_value(std::move(value))
    {}

    /// Throws `DecodingError::typeMismatch` with "Unsupported JSON type" for a null, for what has one in it,
    /// and for a number beyond the largest `double`. The path is that of the whole value, the position in the
    /// text that of the culprit. Linear.
    static AnyJSONValue init(const Decoder& decoder);

    /// Throws `EncodingError::invalidValue`, with the path, for whatever is not in the table above, and what
    /// the encoder throws for numbers that are not finite and for text that is not valid UTF-8.
    void encode(const Encoder& encoder) const;

    /// What it holds.
    const Any& value() const noexcept { return m_value; }

    std::string description() const { return m_value.description(); }
    /// `AnyJSONValue("text")`
    std::string debugDescription() const;
    std::size_t hash() const { return m_value.hash(); }

    friend bool operator==(const AnyJSONValue&, const AnyJSONValue&) = default;

private:
    Any m_value;
};

} // namespace orrenby

template <> struct std::hash<orrenby::AnyJSONValue> {
    std::size_t operator()(const orrenby::AnyJSONValue& value) const { return value.hash(); }
};
