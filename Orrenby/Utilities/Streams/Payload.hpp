#pragma once

/// @file
/// What travels in a stream: a value or a failure.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include <concepts>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Streams {

template <typename OutputType, typename FailureType> class AnyPublisher;

/// One element of a stream: either a value or a failure. A failure is an element like any other and does not
/// end the stream.
///
/// `Failure` may be any type; `Never` says that the stream cannot fail, `AnyError` that it may fail with
/// anything. Both may be the same type. A plain value, trivially copyable if both types are. Their moves must
/// not throw.
///
/// @snippet Tests/Utilities/Streams/PayloadTests.cpp Reading a payload
template <typename OutputType, typename FailureType> class Payload {
    // One flag and a union instead of a variant: that has a third, empty state, which every hop of a stream
    // would test.
    static constexpr bool isPlain
        = std::is_trivially_copyable_v<OutputType> && std::is_trivially_copyable_v<FailureType>;

public:
    using Output = OutputType;
    using Failure = FailureType;

    /// A payload that carries a value.
    static constexpr Payload value(Output value) { return Payload(std::move(value), ValueTag()); }

    /// A payload that carries a failure.
    static constexpr Payload error(Failure error) { return Payload(std::move(error), ErrorTag()); }

    constexpr Payload(const Payload&) requires isPlain = default;
    constexpr Payload(Payload&&) requires isPlain = default;
    constexpr Payload& operator=(const Payload&) requires isPlain = default;
    constexpr Payload& operator=(Payload&&) requires isPlain = default;
    constexpr ~Payload() requires isPlain = default;

    constexpr Payload(const Payload& other)
        : m_isError(other.m_isError)
    {
        construct(other);
    }

    constexpr Payload(Payload&& other) noexcept
        : m_isError(other.m_isError)
    {
        construct(std::move(other));
    }

    constexpr Payload& operator=(const Payload& other) { return *this = Payload(other); }

    constexpr Payload& operator=(Payload&& other) noexcept
    {
        if (this != &other) {
            destroy();
            m_isError = other.m_isError;
            construct(std::move(other));
        }
        return *this;
    }

    constexpr ~Payload() { destroy(); }

    /// Which of the two it carries.
    constexpr bool isValue() const noexcept { return !m_isError; }
    constexpr bool isError() const noexcept { return m_isError; }

    /// The value, or nothing. Valid as long as this payload.
    constexpr const Output* asValue() const noexcept { return m_isError ? nullptr : std::addressof(m_value); }

    /// The failure, or nothing. Valid as long as this payload.
    constexpr const Failure* asError() const noexcept
    {
        return m_isError ? std::addressof(m_error) : nullptr;
    }

    /// The value.
    /// @throws Failure  what is carried instead; an `AnyError` throws what it holds, with its own type.
    constexpr const Output& get() const&
    {
        if (m_isError) [[unlikely]]
            throwError();
        return m_value;
    }

    /// The value, moved out. Throws what is carried instead.
    constexpr Output get() &&
    {
        if (m_isError) [[unlikely]]
            throwError();
        return std::move(m_value);
    }

    /// The value of a stream that cannot fail.
    constexpr const Output& value() const requires std::same_as<Failure, Never>
    {
        if (m_isError) [[unlikely]]
            fatalError(
                "Due to `Never` restriction, `default` can never occur.", "Utilities/Streams+Payload", 33);
        return m_value;
    }

    /// `value(…)` or `error(…)` around the printed form of the content.
    std::string description() const
    {
        auto text = std::string(m_isError ? "error(" : "value(");
        text += m_isError ? describe(m_error) : describe(m_value);
        text += ')';
        return text;
    }

    /// Equal are payloads of the same case with equal contents.
    friend constexpr bool operator==(const Payload& first,
        const Payload& second) requires std::equality_comparable<Output> && std::equality_comparable<Failure>
    {
        if (first.m_isError != second.m_isError)
            return false;
        return first.m_isError ? first.m_error == second.m_error : first.m_value == second.m_value;
    }

private:
    template <typename, typename> friend class AnyPublisher;

    /// For the hops of a stream that cannot fail.
    constexpr const Output& uncheckedValue() const noexcept { return m_value; }

    struct ValueTag {};
    struct ErrorTag {};

    constexpr Payload(Output&& value, ValueTag)
        : m_value(std::move(value))
        , m_isError(false)
    {}

    constexpr Payload(Failure&& error, ErrorTag)
        : m_error(std::move(error))
        , m_isError(true)
    {}

    template <typename Other> constexpr void construct(Other&& other)
    {
        if (m_isError)
            std::construct_at(std::addressof(m_error), std::forward<Other>(other).m_error);
        else
            std::construct_at(std::addressof(m_value), std::forward<Other>(other).m_value);
    }

    constexpr void destroy() noexcept
    {
        if (m_isError)
            std::destroy_at(std::addressof(m_error));
        else
            std::destroy_at(std::addressof(m_value));
    }

    [[noreturn]] void throwError() const
    {
        if constexpr (requires { m_error.rethrow(); })
            m_error.rethrow();
        throw Failure(m_error);
    }

    union {
        Output m_value;
        Failure m_error;
    };
    bool m_isError;
};

} // namespace orrenby::Streams
