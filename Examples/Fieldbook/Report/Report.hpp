#pragma once

/// @file
/// What an observer wrote down in the field.

#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Report/NamedCases.hpp"
#include "Report/ShownText.hpp"
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

enum class Severity { low, medium, high };

/// One report, as it stands in report files: an object with these members. Body and date may be missing.
struct Report {
    Line title;
    Line place;
    Line observer;
    Severity severity = Severity::low;
    std::optional<Passage> body;
    std::optional<orrenby::Date> date = {}; ///< When it was observed.

    friend bool operator==(const Report&, const Report&) = default;
};

/// As it stands in report files: `low`, `medium`, `high`.
std::string_view nameOf(Severity severity);

} // namespace fieldbook

template <>
inline constexpr auto orrenby::allCases<fieldbook::Severity> = std::array{
    fieldbook::Severity::low, fieldbook::Severity::medium, fieldbook::Severity::high};

template <>
struct orrenby::RawRepresentation<fieldbook::Severity> : fieldbook::NamedCases<fieldbook::Severity> {};

/// For people who read that their text is none.
template <> struct orrenby::TypeNameOf<fieldbook::Severity> {
    static std::string text() { return "severity (low, medium or high)"; }
};
