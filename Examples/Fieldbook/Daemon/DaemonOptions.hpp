#pragma once

/// @file
/// The command line of the service.

#include "Folder/SampleFiles.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Service/Faults.hpp"
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace fieldbook {

struct DaemonOptions {
    int port = 0;                  ///< 0 for any that is free.
    SampleRequest feed{5, "demo"}; ///< What it has to tell at first; its seed is that of the faults, too.
    FaultPlan faults;              ///< Nothing goes wrong, unless it is asked for.
    std::optional<std::filesystem::path> keep; ///< Where reports are written to.
    bool isHelp = false;

    friend bool operator==(const DaemonOptions&, const DaemonOptions&) = default;
};

/// Reads the arguments behind the program's name. The failure is a message for whoever typed them.
orrenby::Result<DaemonOptions, std::string> parseDaemonOptions(std::span<const char* const> arguments);

/// The text of `--help`, with its last line end.
std::string_view daemonHelpText();

} // namespace fieldbook
