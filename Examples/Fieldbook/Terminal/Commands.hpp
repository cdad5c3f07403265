#pragma once

/// @file
/// What a user may type.

#include "Folder/SampleFiles.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Settings/Settings.hpp"
#include <string>
#include <string_view>
#include <variant>

namespace fieldbook {

struct Sort {
    SortOrder order;
    friend bool operator==(const Sort&, const Sort&) = default;
};
struct ShowDetails {
    bool isOn;
    friend bool operator==(const ShowDetails&, const ShowDetails&) = default;
};
struct Follow {
    std::string link;
    friend bool operator==(const Follow&, const Follow&) = default;
};
struct SignIn {
    std::string address; ///< As it was typed.
    friend bool operator==(const SignIn&, const SignIn&) = default;
};
struct EnterAsGuest {
    friend bool operator==(const EnterAsGuest&, const EnterAsGuest&) = default;
};
struct SignOut {
    friend bool operator==(const SignOut&, const SignOut&) = default;
};
struct Compose {
    friend bool operator==(const Compose&, const Compose&) = default;
};
struct ShowSettings {
    friend bool operator==(const ShowSettings&, const ShowSettings&) = default;
};
struct MakeSamples {
    SampleRequest request;
    friend bool operator==(const MakeSamples&, const MakeSamples&) = default;
};
struct Speak {
    orrenby::Locale language;
    friend bool operator==(const Speak&, const Speak&) = default;
};
struct Refresh {
    friend bool operator==(const Refresh&, const Refresh&) = default;
};
struct Upload {
    friend bool operator==(const Upload&, const Upload&) = default;
};
struct End {
    friend bool operator==(const End&, const End&) = default;
};
struct Unknown {
    friend bool operator==(const Unknown&, const Unknown&) = default;
};

using Command = std::variant<Sort, ShowDetails, Follow, SignIn, EnterAsGuest, SignOut, Compose, ShowSettings,
    MakeSamples, Speak, Refresh, Upload, End, Unknown>;

/// Reads a line, such as `sort severity` or `samples 5 autumn`: what `commandHelp` names, and `guest`. The
/// words are taken as they stand, with one blank between them.
Command parseCommand(std::string_view line);

/// The commands in one line, for whoever typed something else.
std::string_view commandHelp();

} // namespace fieldbook
