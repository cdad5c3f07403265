#pragma once

/// @file
/// The command line.

#include "Folder/SampleFiles.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace fieldbook {

struct Options {
    std::optional<std::filesystem::path> folder;  ///< Nothing for the bundled samples.
    std::optional<std::filesystem::path> station; ///< The response of a station.
    std::optional<orrenby::EmailAddress> user;    ///< Who signs in at the start.
    std::optional<orrenby::Locale> language;      ///< In which dates are shown.
    std::optional<orrenby::URL> service;          ///< Where reports are sent.
    std::optional<SampleRequest> samples;         ///< To be written into the folder at the start.
    std::optional<std::filesystem::path> store;   ///< The file that reports and settings are kept in.
    std::optional<std::string> link;              ///< To be followed at the start.
    bool isGuest = false;
    bool isHelp = false;
    bool isScript = false;
    bool isUpload = false;
    bool isWatch = false;
    bool usesRx = false;

    friend bool operator==(const Options&, const Options&) = default;
};

/// Reads the arguments behind the program's name. The failure is a message for whoever typed them.
orrenby::Result<Options, std::string> parseOptions(std::span<const char* const> arguments);

/// The text of `--help`, with its last line end.
std::string_view helpText();

} // namespace fieldbook
