#include "Folder/Samples.hpp"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;

fs::path makeTemporaryFolder()
{
    auto name = (fs::temp_directory_path() / "fieldbook-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw fs::filesystem_error(
            "cannot make a folder", name, std::error_code(errno, std::generic_category()));
    return name;
}

/// What the bundled files are in.
fs::path bundle()
{
    std::error_code error;
    const auto program = fs::read_symlink("/proc/self/exe", error);
    const auto installed = program.parent_path().parent_path() / "share" / "fieldbook";
    return fs::is_directory(installed, error) ? installed : fs::path(FIELDBOOK_BUNDLE);
}

} // namespace

fs::path samplesFolder() { return bundle() / "Reports"; }

fs::path sampleResponse() { return bundle() / "Station" / "morning.json"; }

TemporaryCopy::TemporaryCopy(const fs::path& original)
    : m_path(makeTemporaryFolder())
{
    try {
        for (const auto& entry : fs::directory_iterator(original))
            if (entry.is_regular_file())
                fs::copy_file(entry.path(), m_path / entry.path().filename());
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
        throw;
    }
}

TemporaryCopy::~TemporaryCopy()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

} // namespace fieldbook
