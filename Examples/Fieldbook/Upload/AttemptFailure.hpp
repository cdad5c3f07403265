#pragma once

/// @file
/// Why a service that was asked did not do as it was asked.

#include "Upload/Transport.hpp"
#include <string>

namespace fieldbook {

/// An attempt that came to nothing.
struct AttemptFailure {
    std::string reason;     ///< For people: `status 503, "Too busy."`, `no connection: …`.
    bool isPassing = false; ///< Whether another attempt is of use.
    double atLeast = 0;     ///< Seconds for which the service wants to be left alone.

    /// In seconds. A service that wants to be left alone for longer is given up.
    static constexpr double longestWait = 300;

    friend bool operator==(const AttemptFailure&, const AttemptFailure&) = default;
};

/// Whether a service says with this status that it has done what it was asked.
bool isDone(int status);

AttemptFailure failureOf(const Answer& answer);
AttemptFailure failureOf(const TransportFailure& failure);

} // namespace fieldbook
