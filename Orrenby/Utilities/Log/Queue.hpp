#pragma once

/// @file
/// Which thread a log entry was made on.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <functional>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::Log {

/// The main thread, or any other: `Log::Queue::main` or `Log::Queue::background`.
///
/// A plain value of one word, which hashes. Not synchronised.
class Queue {
public:
    /// Both, for `switch`.
    enum Case : int { main, background };

    /// One of the two; `main` without any.
    constexpr Queue(Case value = main) noexcept
        : m_case(value)
    {}

    /// That of the calling thread.
    ORRENBY_EXPORT static Queue current() noexcept;

    /// For comparing and for `switch`.
    constexpr operator Case() const noexcept { return m_case; }

    /// 0 for `main`, 1 for `background`.
    constexpr int rawValue() const noexcept { return m_case; }

    /// "Main" or "Background".
    ORRENBY_EXPORT std::string_view description() const noexcept;

    /// "[MAIN]" or "[BG]".
    ORRENBY_EXPORT std::string_view code() const noexcept;

    /// A rocket or a traffic light.
    ORRENBY_EXPORT std::string_view emoji() const noexcept;

private:
    Case m_case;
};

} // namespace orrenby::Log

template <> struct std::hash<orrenby::Log::Queue> {
    std::size_t operator()(orrenby::Log::Queue queue) const noexcept
    {
        return std::hash<int>()(queue.rawValue());
    }
};
