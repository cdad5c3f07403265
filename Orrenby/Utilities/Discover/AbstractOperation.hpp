#pragma once

/// @file
/// What ends the process when a subclass leaves out what it has to supply.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Ends the process: a class was used without the operation that its subclass supplies.
///
/// @param line  Stands for the operation in the message. It never changes, wherever the operation moves.
[[noreturn]] ORRENBY_EXPORT void abstractOperation(int line) noexcept;

/// Ends the process: a list of plugins has an empty reference.
[[noreturn]] ORRENBY_EXPORT void emptyPlugin() noexcept;

/// Ends the process: a builder was given no callable.
[[noreturn]] ORRENBY_EXPORT void emptyComponentFactory() noexcept;

} // namespace orrenby::detail
