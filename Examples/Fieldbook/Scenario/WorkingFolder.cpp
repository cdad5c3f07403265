#include "Scenario/WorkingFolder.hpp"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace fieldbook {

namespace fs = std::filesystem;

WorkingFolder::WorkingFolder()
    : m_before(fs::current_path())
{
    auto name = (fs::temp_directory_path() / "scene-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw fs::filesystem_error(
            "cannot make a folder", name, std::error_code(errno, std::generic_category()));
    m_path = name;
    fs::create_directory(m_path / reportsFolder);
    fs::current_path(m_path);
}

WorkingFolder::~WorkingFolder()
{
    std::error_code ignored;
    fs::current_path(m_before, ignored);
    fs::remove_all(m_path, ignored);
}

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace fieldbook
