#pragma once

/// @file
/// The photos of reports.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// A photo that belongs to a report.
struct Photo {
    std::filesystem::path file;
    std::string mediaType;

    friend bool operator==(const Photo&, const Photo&) = default;
};

/// The photo beside a report file, which has its name and ends in `.png`, `.jpg` or `.jpeg` instead; the
/// first of these. Nothing where there is none, and for reports that come from elsewhere.
std::optional<Photo> photoOf(const std::filesystem::path& folder, std::string_view reportFile);

} // namespace fieldbook
