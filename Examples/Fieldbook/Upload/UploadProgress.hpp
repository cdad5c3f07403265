#pragma once

/// @file
/// What is told of uploads.

#include <cstddef>
#include <string>

namespace fieldbook {

/// One step in the upload of a report.
struct UploadProgress {
    enum class Step {
        begins,    ///< An attempt begins.
        sends,     ///< Another quarter of the body is on its way: `percent`, never 100.
        waits,     ///< The attempt failed for `reason`; the next one comes in `seconds`.
        isSent,    ///< The service has it.
        isRefused, ///< The service does not want it, or it cannot be sent, for `reason`: trying again is no
                   ///< use.
        isGivenUp  ///< The last attempt failed for `reason`.
    };

    Step step = Step::begins;
    int number = 0;  ///< Of the report.
    int attempt = 1; ///< From 1.
    double seconds = 0;
    int percent = 0;
    std::string reason = {}; ///< A few words, shown as they are.

    friend bool operator==(const UploadProgress&, const UploadProgress&) = default;
};

/// How uploads of a session ended.
struct UploadCount {
    int sent = 0;
    int givenUp = 0;         ///< Those that were refused, too.
    std::size_t waiting = 0; ///< Those that the outbox still holds, to be sent later.
};

} // namespace fieldbook
