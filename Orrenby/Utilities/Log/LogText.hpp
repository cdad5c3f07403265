#pragma once

/// @file
/// Texts among the logged items. Not for use of its own.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Utilities/Log/Append.hpp"
#include <string_view>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Makes an entry that passed its level. All kinds of text share one instantiation.
template <class Item> void logItem(Log::Level level, Item& item, const CallSite& site)
{
    if constexpr (LoggedText<std::remove_cv_t<Item>>) {
        const auto text = isNullText(item) ? std::string_view("none") : std::string_view(item);
        deliverLogEntry(level, logSource(text, site));
    } else
        deliverLogEntry(level, logSource(item, site));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
