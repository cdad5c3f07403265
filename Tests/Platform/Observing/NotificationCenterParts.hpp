#pragma once

/// @file
/// Callbacks of a notification center that write down what they are told.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

using Diary = std::vector<std::string>;

/// Writes the text and what was posted.
inline auto writing(Diary& diary, std::string text)
{
    return [&diary, text = std::move(text)](const Notification& notification) {
        diary.push_back(text + " " + notification.description());
    };
}

} // namespace orrenby::testing
