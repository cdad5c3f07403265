#pragma once

/// @file
/// A folder to work in for a while.

#include <filesystem>
#include <string>

namespace fieldbook {

/// Makes a new folder, with a folder `reports` in it, and makes it the working folder of the process. At its
/// end the process is where it was, and the folder is removed.
class WorkingFolder {
public:
    /// @throws std::filesystem::filesystem_error  if it cannot be made.
    WorkingFolder();
    ~WorkingFolder();
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    std::filesystem::path m_before;
    std::filesystem::path m_path;
};

/// The folder that the application follows, as seen from there.
inline const std::filesystem::path reportsFolder = "reports";

/// All of a file, whatever its size; empty if there is none.
std::string contentOf(const std::filesystem::path& file);

} // namespace fieldbook
