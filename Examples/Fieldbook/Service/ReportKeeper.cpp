#include "Service/ReportKeeper.hpp"

#include <cerrno>
#include <fstream>
#include <string_view>
#include <system_error>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;

constexpr const char* endings[] = {".png", ".jpg", ".photo"};

std::string_view endingFor(std::string_view mediaType)
{
    if (mediaType == "image/png")
        return ".png";
    return mediaType == "image/jpeg" ? ".jpg" : ".photo";
}

/// Writes under another name, and moves the whole.
void write(const fs::path& path, std::string_view bytes)
{
    const auto draft = path.parent_path() / ("." + path.filename().string());
    errno = 0;
    auto file = std::ofstream(draft, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) // streams tell no reasons of their own
        throw fs::filesystem_error(
            "cannot write", path, std::error_code(errno != 0 ? errno : EIO, std::generic_category()));
    fs::rename(draft, path);
}

} // namespace

std::optional<std::string> keepReport(const ReceivedReport& report, const fs::path& folder)
{
    const auto start = folder / std::to_string(report.number);
    const auto fileFor = [&](std::string_view ending) {
        auto path = start;
        return path += ending;
    };
    try {
        const auto ending = report.photo ? endingFor(report.photo->mediaType) : "";
        for (const auto* const other : endings)
            if (other != ending)
                fs::remove(fileFor(other));
        if (report.photo)
            write(fileFor(ending), report.photo->content);
        write(fileFor(".json"), report.text);
        return {};
    } catch (const fs::filesystem_error& error) {
        return error.code().message();
    }
}

} // namespace fieldbook
