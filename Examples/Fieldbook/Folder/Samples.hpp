#pragma once

/// @file
/// The bundled files.

#include <filesystem>

namespace fieldbook {

/// The folder of the sample reports: beside the installed program in `share/fieldbook/Reports`, or in the
/// source tree from which the program was built.
std::filesystem::path samplesFolder();

/// The sample response of a station, beside the reports in `Station`. Its settings are malformed on purpose.
std::filesystem::path sampleResponse();

/// A new folder with copies of all regular files of another one. It is removed at its owner's end.
class TemporaryCopy {
public:
    /// @throws std::filesystem::filesystem_error  if it cannot be made.
    explicit TemporaryCopy(const std::filesystem::path& original);
    ~TemporaryCopy();

    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace fieldbook
