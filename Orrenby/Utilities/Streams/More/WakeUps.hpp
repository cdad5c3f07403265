#pragma once

/// @file
/// The moments for which a timed operator waits.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <optional>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Keeps the one moment that is asked for, and tells which work to post for it.
///
/// A queue takes no work back. So a moment that moves on with each of many elements posts no work for each:
/// the one that waits already finds out when it comes that it is early, and is posted again for the rest.
///
/// Seconds of the world's clock. Not synchronised.
class ORRENBY_EXPORT WakeUps {
public:
    /// Work to be posted: it has to `come` with this number, in so many seconds.
    struct Wait {
        double seconds;
        std::uint64_t number;
    };

    /// Asks for a moment, instead of any that was asked for before.
    std::optional<Wait> ask(double seconds);

    void putOff() noexcept { m_moment.reset(); }

    /// A posted work has come. It may have to be posted again.
    std::optional<Wait> come(std::uint64_t number);

    /// Whether the moment is there; once for each that was asked for.
    bool takeDue() noexcept;

private:
    Wait posted(double seconds, double moment) noexcept;

    std::optional<double> m_moment;
    std::optional<double> m_postedMoment;
    std::uint64_t m_postedNumber = 0;
    bool m_isDue = false;
};

} // namespace orrenby::detail
