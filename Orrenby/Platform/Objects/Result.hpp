#pragma once

/// @file
/// The outcome of something that can fail.

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include <concepts>
#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace orrenby::inline ORRENBY_ABI {

template <class Success, class Failure> class Result;

namespace detail {

template <class Failure> [[noreturn]] void throwFailure(const Failure& failure)
{
    if constexpr (requires { failure.rethrow(); }) {
        failure.rethrow();
        std::terminate(); // only a rethrow() that breaks its promise comes here
    } else if constexpr (std::is_same_v<Failure, std::exception_ptr>)
        std::rethrow_exception(failure);
    else
        throw failure;
}

/// Calls with the value where the callable takes it, else without.
template <class F, class Value> void callWith(F&& function, const Value& value)
{
    if constexpr (std::invocable<F, const Value&>)
        static_cast<void>(std::forward<F>(function)(value));
    else
        static_cast<void>(std::forward<F>(function)());
}

template <class... T>
concept EqualityComparable = (std::equality_comparable<T> && ...);

template <class T>
concept HasHash = requires(const T& value)
{
    std::hash<T>{}(value);
};

template <class F, class Value>
concept TakesOrIgnores = std::invocable<F, const Value&> || std::invocable<F>;

} // namespace detail

/// A success value or a failure.
///
/// Both types may be the same. The names say which: `Result<int, Error>::success(1)`, `Result<int,
/// Error>::failure(error)`. It prints as `success(1)` or `failure(…)`, with its content in debug form.
///
/// @snippet Tests/Platform/Objects/ResultTests.cpp Working with an outcome
///
/// A plain value. Not synchronised.
template <class Success, class Failure> class Result {
public:
    /// One outcome or the other.
    static Result success(Success value) { return Result(std::in_place_index<0>, std::move(value)); }
    static Result failure(Failure error) { return Result(std::in_place_index<1>, std::move(error)); }

    /// Success that carries nothing.
    static Result success() requires std::same_as<Success, Void> { return success(Void{}); }

    /// Which of the two it is.
    bool isSuccess() const noexcept { return m_outcome.index() == 0; }
    bool isFailure() const noexcept { return !isSuccess(); }

    /// The success value, or nothing.
    std::optional<Success> value() const
    {
        const auto* value = std::get_if<0>(&m_outcome);
        return value != nullptr ? std::optional<Success>(*value) : std::nullopt;
    }

    /// The failure, or nothing.
    std::optional<Failure> error() const
    {
        const auto* error = std::get_if<1>(&m_outcome);
        return error != nullptr ? std::optional<Failure>(*error) : std::nullopt;
    }

    /// The success value. Throws the failure: as what it holds when it holds any error, as a copy of itself
    /// otherwise.
    const Success& unwrap() const&
    {
        if (const auto* error = std::get_if<1>(&m_outcome))
            detail::throwFailure(*error);
        return *std::get_if<0>(&m_outcome);
    }
    Success unwrap() &&
    {
        if (const auto* error = std::get_if<1>(&m_outcome))
            detail::throwFailure(*error);
        return std::move(*std::get_if<0>(&m_outcome));
    }

    /// Calls with the success value, or with nothing, on success only; gives this outcome, so that calls
    /// chain. What the callable throws passes through.
    template <detail::TakesOrIgnores<Success> F> const Result& onSuccess(F&& function) const&
    {
        if (const auto* value = std::get_if<0>(&m_outcome))
            detail::callWith(std::forward<F>(function), *value);
        return *this;
    }
    template <detail::TakesOrIgnores<Success> F> Result onSuccess(F&& function) &&
    {
        std::as_const(*this).onSuccess(std::forward<F>(function));
        return std::move(*this);
    }

    /// Calls with the failure, or with nothing, on failure only; otherwise as `onSuccess`.
    template <detail::TakesOrIgnores<Failure> F> const Result& onFailure(F&& function) const&
    {
        if (const auto* error = std::get_if<1>(&m_outcome))
            detail::callWith(std::forward<F>(function), *error);
        return *this;
    }
    template <detail::TakesOrIgnores<Failure> F> Result onFailure(F&& function) &&
    {
        std::as_const(*this).onFailure(std::forward<F>(function));
        return std::move(*this);
    }

    /// The same outcome, without the success value.
    Result<Void, Failure> void_() const
    {
        if (const auto* error = std::get_if<1>(&m_outcome))
            return Result<Void, Failure>::failure(*error);
        return Result<Void, Failure>::success();
    }

    /// The outcome of `transform` on the success value: what it throws becomes the failure. A failure stays
    /// the same error. A transform without a result gives a `Result<Void, AnyError>`.
    template <std::invocable<const Success&> F> auto map(F&& transform) const
    {
        using Transformed = std::remove_cvref_t<std::invoke_result_t<F, const Success&>>;
        constexpr bool hasResult = !std::is_void_v<Transformed>;
        using Mapped = Result<std::conditional_t<hasResult, Transformed, Void>, AnyError>;
        if (const auto* error = std::get_if<1>(&m_outcome))
            return Mapped::failure(AnyError(*error));
        try {
            if constexpr (hasResult)
                return Mapped::success(std::forward<F>(transform)(*std::get_if<0>(&m_outcome)));
            else {
                std::forward<F>(transform)(*std::get_if<0>(&m_outcome));
                return Mapped::success();
            }
        } catch (...) {
            return Mapped::failure(AnyError(std::current_exception()));
        }
    }

    std::string description() const
    {
        if (const auto* error = std::get_if<1>(&m_outcome))
            return "failure(" + debugDescribe(*error) + ")";
        return "success(" + debugDescribe(*std::get_if<0>(&m_outcome)) + ")";
    }
    std::string debugDescription() const { return description(); }

    friend bool operator==(
        const Result& first, const Result& second) requires detail::EqualityComparable<Success, Failure>
    {
        return first.m_outcome == second.m_outcome;
    }

private:
    template <std::size_t Index, class Content>
    explicit Result(std::in_place_index_t<Index> which, Content&& content)
        : m_outcome(which, std::forward<Content>(content))
    {}

    std::variant<Success, Failure> m_outcome;
};

} // namespace orrenby

/// Where both contents can be hashed. A success and a failure with the same content differ.
template <orrenby::detail::HasHash Success, orrenby::detail::HasHash Failure>
struct std::hash<orrenby::Result<Success, Failure>> {
    std::size_t operator()(const orrenby::Result<Success, Failure>& result) const
    {
        constexpr std::size_t factor = 0x9E3779B97F4A7C15U;
        if (const auto error = result.error())
            return std::hash<Failure>{}(*error) * factor + 1;
        return std::hash<Success>{}(*result.value()) * factor;
    }
};
