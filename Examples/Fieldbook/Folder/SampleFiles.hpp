#pragma once

/// @file
/// Writing reports that are made up into a folder.

#include "Orrenby/Platform/Objects/Result.hpp"
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// How many reports are made up, and from which seed.
struct SampleRequest {
    static constexpr int limit = 1000;

    int count = 0;             ///< From 1 to the limit.
    std::string seed = "demo"; ///< Stands in the names of the files.

    friend bool operator==(const SampleRequest&, const SampleRequest&) = default;
};

/// Reads `5`, or `5 autumn` with this separator. A seed has up to 32 letters, digits and "-", of ASCII all.
/// Nothing for any other text.
std::optional<SampleRequest> sampleRequestIn(std::string_view text, char separator = ' ');

/// Writes the reports as JSON into the files `sample-SEED-1.json` and so on, in place of those that are
/// there. Each file shows up whole. The failure is why one could not be written; those before it stay.
orrenby::Result<std::size_t, std::string> writeSamples(
    const SampleRequest& request, const std::filesystem::path& folder);

} // namespace fieldbook
