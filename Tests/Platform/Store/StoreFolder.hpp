#pragma once

/// @file
/// A folder for store files that goes away with its test.

#include "Orrenby/Platform/Store/StoreError.hpp"
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>

namespace orrenby::tests {

class StoreFolder {
public:
    StoreFolder()
    {
        auto pattern = (std::filesystem::temp_directory_path() / "orrenby-store-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        m_path = pattern;
    }
    StoreFolder(const StoreFolder&) = delete;
    StoreFolder& operator=(const StoreFolder&) = delete;
    ~StoreFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string file(const std::string& name = "store") const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

/// The kind of store error that `work` throws; nothing when it throws none.
template <class Work> std::optional<StoreError::Kind> failureOf(Work&& work)
{
    try {
        work();
        return std::nullopt;
    } catch (const StoreError& error) {
        return error.kind();
    }
}

inline void writeFile(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

inline std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

} // namespace orrenby::tests
