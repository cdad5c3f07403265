#pragma once

/// @file
/// A place for the files of a test.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace orrenby::tests {

/// A folder of its own, which is removed with it, even when nobody may write into it any more.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        auto name = (std::filesystem::temp_directory_path() / "orrenby-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            std::abort();
        m_path = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& path() const { return m_path; }

    /// The path of a file in it, which need not be there.
    std::string file(std::string_view name) const { return (m_path / name).string(); }

    /// Writes a file and gives its path.
    std::string file(std::string_view name, std::string_view content) const
    {
        std::ofstream(file(name), std::ios::binary) << content;
        return file(name);
    }

private:
    std::filesystem::path m_path;
};

/// All bytes of the file. Empty if there is none.
inline std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

} // namespace orrenby::tests
