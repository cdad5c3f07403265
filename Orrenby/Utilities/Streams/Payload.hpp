#pragma once

/// @file
/// What travels in a stream: a value or a failure.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include <concepts>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace orrenby::inline ORRENBY_ABI::Streams {

/// One element of a stream: either a value or a failure. A failure is an element like any other and does not
/// end the stream.
///
/// `Failure` may be any type; `Never` says that the stream cannot fail, `AnyError` that it may fail with
/// anything. Both may be the same type. A plain value, trivially copyable if both types are.
///
/// @snippet Tests/Utilities/Streams/PayloadTests.cpp Reading a payload
template <typename OutputType, typename FailureType> class Payload {
public:
    using Output = OutputType;
    using Failure = FailureType;

    static constexpr Payload value(Output value) { return Payload(std::in_place_index<0>, std::move(value)); }
    static constexpr Payload error(Failure error)
    {
        return Payload(std::in_place_index<1>, std::move(error));
    }

    constexpr bool isValue() const noexcept { return m_content.index() == 0; }
    constexpr bool isError() const noexcept { return m_content.index() == 1; }

    /// The value, or nothing. Valid as long as this payload.
    constexpr const Output* asValue() const noexcept { return std::get_if<0>(&m_content); }

    /// The failure, or nothing. Valid as long as this payload.
    constexpr const Failure* asError() const noexcept { return std::get_if<1>(&m_content); }

    /// The value.
    /// @throws Failure  what is carried instead; an `AnyError` throws what it holds, with its own type.
    const Output& get() const&
    {
        if (isError()) [[unlikely]]
            throwError();
        return *asValue();
    }

    Output get() &&
    {
        if (isError()) [[unlikely]]
            throwError();
        return std::move(*std::get_if<0>(&m_content));
    }

    /// The value of a stream that cannot fail.
    const Output& value() const requires std::same_as<Failure, Never>
    {
        if (isError()) [[unlikely]]
            fatalError(
                "Due to `Never` restriction, `default` can never occur.", "Utilities/Streams+Payload", 33);
        return *asValue();
    }

    /// `value(…)` or `error(…)` around the printed form of the content.
    std::string description() const
    {
        return isValue() ? "value(" + describe(*asValue()) + ")" : "error(" + describe(*asError()) + ")";
    }

    /// Equal are payloads of the same case with equal contents.
    friend constexpr bool operator==(const Payload& first,
        const Payload& second) requires std::equality_comparable<Output> && std::equality_comparable<Failure>
    {
        return first.m_content == second.m_content;
    }

private:
    template <std::size_t Case, typename Content>
    constexpr Payload(std::in_place_index_t<Case> tag, Content&& content)
        : m_content(tag, std::forward<Content>(content))
    {
    }

    [[noreturn]] void throwError() const
    {
        if constexpr (requires { asError()->rethrow(); })
            asError()->rethrow();
        throw Failure(*asError());
    }

    std::variant<Output, Failure> m_content;
};

} // namespace orrenby::Streams
