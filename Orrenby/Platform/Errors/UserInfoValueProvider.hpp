#pragma once

/// @file
/// Values that an error's domain supplies on demand.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <concepts>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class NSError;

/// Answers for user-information entries that errors of one domain do not carry themselves.
///
/// It is called with the error and a key and gives the value, or null for a key it does not know. `NSError`
/// keeps one for each domain. Copies share the callable, which must not change when it is called.
///
/// As safe to use from several threads as the callable is.
class UserInfoValueProvider {
public:
    /// None.
    UserInfoValueProvider() noexcept = default;

    /// Keeps one copy of the callable, which all copies share.
    template <class F>
        requires(
            !std::same_as<std::remove_cvref_t<F>,
                UserInfoValueProvider> && std::is_invocable_r_v<Any, const std::remove_cvref_t<F>&, const NSError&, std::string_view>)
    UserInfoValueProvider(F&& provider)
        : m_callable(std::make_shared<const Callable<std::remove_cvref_t<F>>>(std::forward<F>(provider)))
    {}

    /// Whether there is a callable.
    explicit operator bool() const noexcept { return m_callable != nullptr; }

    /// Null when there is no provider.
    Any operator()(const NSError& error, std::string_view key) const
    {
        return m_callable ? m_callable->call(error, key) : Any();
    }

private:
    struct Base {
        virtual ~Base() = default;
        virtual Any call(const NSError& error, std::string_view key) const = 0;
    };
    template <class F> struct Callable final : Base {
        explicit Callable(F provider)
            : m_provider(std::move(provider))
        {}
        Any call(const NSError& error, std::string_view key) const override { return m_provider(error, key); }
        F m_provider;
    };

    std::shared_ptr<const Base> m_callable;
};

} // namespace orrenby
