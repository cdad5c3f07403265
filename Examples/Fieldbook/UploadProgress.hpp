#pragma once

/// @file
/// What is told of uploads.

namespace fieldbook {

/// One step in the upload of a report.
struct UploadProgress {
    enum class Step {
        begins,   ///< An attempt begins.
        waits,    ///< The attempt failed; the next one comes in `seconds`.
        isSent,   ///< The service has it.
        isGivenUp ///< The last attempt failed.
    };

    Step step;
    int number;      ///< Of the report.
    int attempt = 1; ///< From 1.
    double seconds = 0;

    friend bool operator==(const UploadProgress&, const UploadProgress&) = default;
};

/// How uploads of a session ended.
struct UploadCount {
    int sent = 0;
    int givenUp = 0;
};

} // namespace fieldbook
