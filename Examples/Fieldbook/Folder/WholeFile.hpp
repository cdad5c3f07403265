#pragma once

/// @file
/// Writing files that others watch.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// Writes the bytes into the file, in place of what it held. It shows up whole: until then they are in a
/// file beside it, whose name begins with a dot.
///
/// @returns Why that could not be done, or nothing. Then the file is as it was, and nothing is beside it.
std::optional<std::string> writeWhole(const std::filesystem::path& file, std::string_view bytes);

} // namespace fieldbook
