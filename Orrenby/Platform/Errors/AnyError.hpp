#pragma once

/// @file
/// Any error at all, without losing its type.

#include "Orrenby/Platform/Errors/Error.hpp"
#include "Orrenby/Platform/Errors/ErrorBox.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Holds a value of any type, or any thrown exception, as an error.
///
/// What it holds keeps its type: it can be looked at (`cast`), thrown again as it was (`rethrow`), and seen
/// as a platform error object. An `AnyError` never holds another one; it takes over what the other holds. It
/// never is empty.
///
/// @snippet Tests/Platform/Errors/AnyErrorTests.cpp Holding any error
///
/// Copies share what they hold, which never changes: safe to use from several threads. Making one allocates
/// once.
class ORRENBY_EXPORT AnyError final : public Error {
public:
    /// Holds a copy of `value`, whether or not its type counts as an error.
    template <class Value>
        requires(
            !std::derived_from<std::remove_cvref_t<Value>,
                AnyError> && !std::same_as<std::remove_cvref_t<Value>, std::exception_ptr> && !std::same_as<std::remove_cvref_t<Value>, std::exception> // a copy of it would have lost its type
            && std::copy_constructible<std::decay_t<Value>>)
    AnyError(Value&& value)
        : m_box(
            std::make_shared<const detail::ErrorValueBox<std::decay_t<Value>>>(std::forward<Value>(value)))
    {}

    /// Holds what was thrown, usually `std::current_exception()`. An empty pointer is a programming error and
    /// ends the process.
    explicit AnyError(std::exception_ptr thrown);

    AnyError(const AnyError&) noexcept = default;
    AnyError& operator=(const AnyError&) noexcept = default;
    ~AnyError() override;

    /// What is held, if it is a `T` or derives publicly from it; otherwise nothing. Valid as long as any copy
    /// of this error lives.
    ///
    /// A thrown raw pointer cannot be looked at, only thrown again. Cheap for the exact type and for classes
    /// derived from `std::exception`; other base classes cost a throw, about a microsecond.
    template <class T> const T* cast() const noexcept
    {
        static_assert(
            std::is_same_v<T, std::remove_cvref_t<T>>, "name the plain type, without const or reference");
        if constexpr (std::is_same_v<T, AnyError>)
            return this;
        else
            return m_box->find<T>();
    }

    /// Throws what is held, with its own type.
    [[noreturn]] void rethrow() const;

    /// Whether what is held was thrown, or is a value whose type counts as an error (`isErrorValue`).
    bool isErrorValue() const noexcept { return m_box->isErrorValue(); }

    /// The description of what is held.
    std::string description() const override;

    /// The full printed form of what is held, which names its type.
    std::string debugDescription() const override;

    std::unique_ptr<Error> clone() const override;

    /// What is held, seen as a platform error object by the rules of `toNSError`, even if it is no error
    /// value.
    NSError nsError() const override;

    /// Something if what is held declares its domain, code and user information itself.
    std::optional<NSError> customNSError() const override;

    /// Both hold the same, or look the same as platform error objects.
    ORRENBY_EXPORT friend bool operator==(const AnyError& first, const AnyError& second);

private:
    std::shared_ptr<const detail::ErrorBox> m_box;
};

} // namespace orrenby
