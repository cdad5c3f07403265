#pragma once

/// @file
/// What the symbols of a line of marbles stand for.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Testing/MarbleScript.hpp"
#include "Orrenby/Utilities/Streams/Payload.hpp"
#include <concepts>
#include <map>
#include <optional>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

template <class Value>
concept MarbleNumber = std::integral<Value> && !std::same_as<Value, bool>;

/// What a symbol is by itself: a character itself, a text of it, the number that a digit shows, `Void`.
template <class Value> std::optional<Value> plainMarbleValue([[maybe_unused]] char symbol)
{
    if constexpr (std::same_as<Value, char>)
        return symbol;
    else if constexpr (std::same_as<Value, std::string>)
        return std::string(1, symbol);
    else if constexpr (MarbleNumber<Value>)
        return symbol >= '0' && symbol <= '9' ? std::optional(static_cast<Value>(symbol - '0'))
                                              : std::nullopt;
    else if constexpr (std::same_as<Value, Void>)
        return Void();
    else
        return std::nullopt;
}

/// The symbols that a value may have by itself.
inline constexpr std::string_view plainMarbles
    = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

template <class Value> bool isSameMarble(const Value& first, const Value& second)
{
    if constexpr (std::equality_comparable<Value>)
        return first == second;
    else
        return false;
}

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::testing {

/// The values and failures of a line of marbles, and the length of its frames.
///
/// Values need no entry where the symbol says it all: with characters, texts of one character, and numbers
/// below ten; any symbol is a `Void`, which is printed as `0`. A `#` without an entry is a `Failure` made
/// without arguments. A letter among the failures is a failure as well.
///
/// A plain value. Not synchronised.
template <class Output, class Failure = Never> struct MarbleLegend {
    std::map<char, Output> values{};    ///< What letters and digits stand for.
    std::map<char, Failure> failures{}; ///< What `#` and other symbols of failures stand for.
    /// In seconds of the world's clock.
    double frame = 0.01;

    using Payload = Streams::Payload<Output, Failure>;

    /// What the symbol stands for; nothing when there is no entry that says so.
    std::optional<Payload> payload(char symbol) const
    {
        if (const auto failure = failures.find(symbol); failure != failures.end())
            return Payload::error(failure->second);
        if constexpr (std::default_initializable<Failure> && !std::same_as<Failure, Never>)
            if (symbol == '#')
                return Payload::error(Failure());
        if (const auto value = values.find(symbol); value != values.end())
            return Payload::value(value->second);
        if (symbol != '#')
            if (const auto value = detail::plainMarbleValue<Output>(symbol))
                return Payload::value(*value);
        return std::nullopt;
    }

    /// The symbol of a payload: `#` for a failure and `?` for a value that none stands for.
    char symbol(const Payload& payload) const
    {
        if (const auto* const error = payload.asError()) {
            for (const auto& [symbol, failure] : failures)
                if (detail::isSameMarble(failure, *error))
                    return symbol;
            return '#';
        }
        for (const auto& [symbol, value] : values)
            if (detail::isSameMarble(value, *payload.asValue()))
                return symbol;
        for (const char symbol : detail::plainMarbles)
            if (const auto value = detail::plainMarbleValue<Output>(symbol);
                value && !values.contains(symbol))
                if (detail::isSameMarble(*value, *payload.asValue()))
                    return symbol;
        return '?';
    }
};

} // namespace orrenby::testing
