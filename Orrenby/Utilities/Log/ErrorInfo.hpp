#pragma once

/// @file
/// Telling errors by domain and code.

#include "Orrenby/Platform/Errors/ErrorValue.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace Log {

/// Names a kind of error: `Log::ErrorInfo("NSURLErrorDomain", -999)`.
///
/// A plain value. Not synchronised.
class ErrorInfo {
public:
    /// Any text and any number; they need not be known to anybody.
    ErrorInfo(std::string_view domain, std::int64_t code)
        : m_domain(domain)
        , m_code(code)
    {}

    /// Whose codes these are.
    const std::string& domain() const noexcept { return m_domain; }

    /// What the domain calls the error.
    std::int64_t code() const noexcept { return m_code; }

    friend bool operator==(const ErrorInfo&, const ErrorInfo&) = default;

private:
    std::string m_domain;
    std::int64_t m_code;
};

/// The failed URL loads that are nobody's fault: cancelled, connection lost, not connected, secure connection
/// failed, timed out. A new list at each call.
ORRENBY_EXPORT std::vector<ErrorInfo> nonCriticalErrors();

} // namespace Log

namespace detail {

ORRENBY_EXPORT bool matchesAny(const NSError& error, const std::vector<Log::ErrorInfo>& list);
ORRENBY_EXPORT NSError thrownNSError(const std::exception_ptr& thrown);

class MatchingErrors {
public:
    explicit MatchingErrors(std::vector<Log::ErrorInfo> list)
        : m_list(std::move(list))
    {}

    template <ErrorValue E> friend bool operator|(const E& error, const MatchingErrors& matching)
    {
        return matchesAny(toNSError(error), matching.m_list);
    }
    friend bool operator|(const std::exception_ptr& thrown, const MatchingErrors& matching)
    {
        return matchesAny(thrownNSError(thrown), matching.m_list);
    }

private:
    std::vector<Log::ErrorInfo> m_list;
};

struct Matches {
    template <ErrorValue E> bool operator()(const E& error, const std::vector<Log::ErrorInfo>& list) const
    {
        return matchesAny(toNSError(error), list);
    }
    bool operator()(const std::exception_ptr& thrown, const std::vector<Log::ErrorInfo>& list) const
    {
        return matchesAny(thrownNSError(thrown), list);
    }
    [[nodiscard]] MatchingErrors operator()(std::vector<Log::ErrorInfo> list) const
    {
        return MatchingErrors(std::move(list));
    }
};

} // namespace detail

/// Whether an error, seen as a platform error object, has domain and code of one in the list: `matches(error,
/// list)` or `error | matches(list)`. False for an empty list.
///
/// Takes any error value, and a `std::exception_ptr` that is not empty.
///
/// @snippet Tests/Utilities/Log/ErrorInfoTests.cpp Sparing failed loads
///
/// Linear in the list. Safe to use from several threads.
inline constexpr detail::Matches matches{};

} // namespace orrenby
