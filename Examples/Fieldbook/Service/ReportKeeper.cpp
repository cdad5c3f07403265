#include "Service/ReportKeeper.hpp"

#include "Folder/WholeFile.hpp"
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

} // namespace

std::optional<std::string> keepReport(const ReceivedReport& report, const fs::path& folder)
{
    const auto start = folder / std::to_string(report.number);
    const auto fileFor = [&](std::string_view ending) {
        auto path = start;
        return path += ending;
    };
    const auto ending = report.photo ? endingFor(report.photo->mediaType) : "";
    for (const auto* const other : endings)
        if (std::error_code error; other != ending && !fs::remove(fileFor(other), error) && error)
            return error.message();
    if (report.photo)
        if (auto problem = writeWhole(fileFor(ending), report.photo->content))
            return problem;
    return writeWhole(fileFor(".json"), report.text);
}

} // namespace fieldbook
