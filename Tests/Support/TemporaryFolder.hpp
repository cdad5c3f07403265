#pragma once

/// @file
/// A place for the files of a test.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace orrenby::tests {

/// A folder of its own, which is removed with it.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        auto name = (std::filesystem::temp_directory_path() / "orrenby-XXXXXX").string();
        m_path = ::mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string path(std::string_view name) const { return (m_path / name).string(); }

    /// Writes a file and gives its path.
    std::string file(std::string_view name, std::string_view content) const
    {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

private:
    std::filesystem::path m_path;
};

} // namespace orrenby::tests
