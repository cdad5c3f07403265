#pragma once

/// @file
/// Reading files of moderate size.

#include "Orrenby/Platform/Objects/Result.hpp"
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace fieldbook {

/// Files above this size, in bytes, are not read.
inline constexpr std::size_t fileSizeLimit = 1024 * 1024;

/// The content of the file, or why it cannot be read; nothing if there is no such file. Never waits: what is
/// no regular file is a problem.
std::optional<orrenby::Result<std::string, std::string>> readFile(const std::filesystem::path& path);

} // namespace fieldbook
