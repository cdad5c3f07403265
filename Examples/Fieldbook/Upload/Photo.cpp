#include "Upload/Photo.hpp"

#include "Folder/ReportFolder.hpp"
#include <system_error>

namespace fieldbook {

std::optional<Photo> photoOf(const std::filesystem::path& folder, std::string_view reportFile)
{
    struct Form {
        const char* extension;
        const char* mediaType;
    };
    constexpr Form forms[] = {{".png", "image/png"}, {".jpg", "image/jpeg"}, {".jpeg", "image/jpeg"}};

    if (!isReportName(reportFile) || reportFile.find('/') != std::string_view::npos)
        return {};
    for (const auto& form : forms) {
        const auto file = (folder / reportFile).replace_extension(form.extension);
        std::error_code error;
        if (std::filesystem::is_regular_file(file, error))
            return Photo{file, form.mediaType};
    }
    return {};
}

} // namespace fieldbook
