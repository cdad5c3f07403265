#pragma once

/// @file
/// Beginning a session where the last one ended.

#include "Application/Session.hpp"

namespace fieldbook {

/// The names of the settings that outlive a run.
namespace settingNames {

inline constexpr auto order = "order";
inline constexpr auto details = "details";
inline constexpr auto language = "language";
inline constexpr auto user = "user";

} // namespace settingNames

/// Gives the session what its memory holds: the numbers of all files, the reports that were there, and the
/// settings, except who is signed in and a language that were chosen for this run. Before the tree stands.
void recall(Session& session);

/// The next run begins with nobody signed in. Where that cannot be written it makes a log entry.
void forgetUser(Session& session);

} // namespace fieldbook
