#pragma once

/// @file
/// The JSON objects that service and application exchange.

#include <cstdint>
#include <string>

namespace fieldbook {

/// Asks for a token.
struct SignInRequest {
    std::string address;
};

struct SignInAnswer {
    std::string token;
};

/// Says that a report was taken.
struct ReportAnswer {
    int number = 0;
    std::int64_t photoBytes = 0; ///< 0 without a photo.
};

/// Says why something was refused, in one sentence.
struct ServiceProblem {
    std::string problem;
};

} // namespace fieldbook
