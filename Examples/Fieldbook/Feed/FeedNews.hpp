#pragma once

/// @file
/// What the feed tells: the elements of its stream.

#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Report/Report.hpp"
#include <cstddef>
#include <optional>
#include <string>
#include <variant>

namespace fieldbook {

/// The folder that all news is about: the first element. What is in it already follows as added.
struct Opened {
    std::string folder;

    friend bool operator==(const Opened&, const Opened&) = default;
};

/// Reports are remembered from the last run. They follow.
struct Recalled {
    std::size_t reportCount = 0;

    friend bool operator==(const Recalled&, const Recalled&) = default;
};

/// A report as it was when the last run ended. What became of it meanwhile follows as changed or removed.
struct Remembered {
    std::string file;
    Report report;

    friend bool operator==(const Remembered&, const Remembered&) = default;
};

/// Everything that was in the folder at first has been told.
struct Scanned {
    std::size_t fileCount = 0;

    friend bool operator==(const Scanned&, const Scanned&) = default;
};

/// A report that was not there before, or could not be read before.
struct Added {
    std::string file; ///< Or whatever else tells reports apart that come from elsewhere.
    Report report;

    friend bool operator==(const Added&, const Added&) = default;
};

/// A known report that says something else now.
struct Changed {
    std::string file;
    Report report;

    friend bool operator==(const Changed&, const Changed&) = default;
};

/// A file that went away. The report is what it said last; nothing if it could not be read.
struct Removed {
    std::string file;
    std::optional<Report> report;

    friend bool operator==(const Removed&, const Removed&) = default;
};

/// A file that ought to be a report and is none, or not any more.
struct Unreadable {
    std::string file;
    std::string problem; ///< One line, shown as it is.

    friend bool operator==(const Unreadable&, const Unreadable&) = default;
};

/// What the station has to say, one line.
struct StationSays {
    std::string text;

    friend bool operator==(const StationSays&, const StationSays&) = default;
};

/// A part of the station's response that cannot be taken, or the whole of it.
struct StationGarbled {
    std::string problem; ///< One line, shown as it is.

    friend bool operator==(const StationGarbled&, const StationGarbled&) = default;
};

/// What there is to say of the service's list of reports, one line.
struct ServiceSays {
    std::string text;

    friend bool operator==(const ServiceSays&, const ServiceSays&) = default;
};

/// A report of the service that cannot be taken, or the whole list.
struct ServiceGarbled {
    std::string problem; ///< One line, shown as it is.

    friend bool operator==(const ServiceGarbled&, const ServiceGarbled&) = default;
};

/// Somebody signed in.
struct SignedIn {
    orrenby::EmailAddress address;

    friend bool operator==(const SignedIn&, const SignedIn&) = default;
};

/// Somebody could not sign in.
struct SignInRefused {
    std::string problem; ///< One line, shown as it is.

    friend bool operator==(const SignInRefused&, const SignInRefused&) = default;
};

using FeedNews = std::variant<Opened, Recalled, Remembered, Scanned, Added, Changed, Removed, Unreadable,
    StationSays, StationGarbled, ServiceSays, ServiceGarbled, SignedIn, SignInRefused>;

/// Why there will be no more news: the failure of the stream.
struct FolderLost {
    std::string reason;

    friend bool operator==(const FolderLost&, const FolderLost&) = default;
};

} // namespace fieldbook
