#pragma once

/// @file
/// The language in which dates are shown.

#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// The language that a user names: `de`, `pt_BR`. Nothing for what names none.
std::optional<orrenby::Locale> languageNamed(std::string_view text);

/// From now on dates are shown in this language, with the customs of its region.
void choose(const orrenby::Locale& language);

/// Day and time: `March 4, 2026, 12:40 PM`, or `4. März 2026, 12:40`. In the zone of this machine.
std::string shownDate(orrenby::Date date);

} // namespace fieldbook
