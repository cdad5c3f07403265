#pragma once

/// @file
/// A folder that goes away with its test.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>

namespace fieldbook {

class OwnFolder {
public:
    OwnFolder()
        : m_path(::testing::TempDir() + "fieldbook-XXXXXX")
    {
        if (::mkdtemp(m_path.data()) == nullptr)
            std::abort();
    }
    ~OwnFolder() { std::filesystem::remove_all(m_path); }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    std::filesystem::path path() const { return m_path; }
    std::filesystem::path file(const char* name) const { return path() / name; }

private:
    std::string m_path;
};

inline void writeFile(const std::filesystem::path& file, std::string_view content)
{
    std::ofstream(file, std::ios::binary) << content;
}

inline std::string contentOf(const std::filesystem::path& file)
{
    auto stream = std::ifstream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

} // namespace fieldbook
