#pragma once

/// @file
/// What an observer wrote down in the field.

#include <string>
#include <string_view>

namespace fieldbook {

enum class Severity { low, medium, high };

/// One report. All texts are UTF-8 without control characters; the body alone may have several lines.
struct Report {
    std::string title;
    std::string place;
    std::string observer;
    Severity severity = Severity::low;
    std::string body;

    friend bool operator==(const Report&, const Report&) = default;
};

/// As it stands in report files: `low`, `medium`, `high`.
std::string_view nameOf(Severity severity);

} // namespace fieldbook
