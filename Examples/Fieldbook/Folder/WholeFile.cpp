#include "Folder/WholeFile.hpp"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace fieldbook {

std::optional<std::string> writeWhole(const std::filesystem::path& file, std::string_view bytes)
{
    const auto draft = file.parent_path() / ("." + file.filename().string());
    errno = 0;
    auto stream = std::ofstream(draft, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) // streams tell no reasons of their own
        return std::generic_category().message(errno != 0 ? errno : EIO);
    std::error_code error;
    std::filesystem::rename(draft, file, error);
    return error ? std::optional(error.message()) : std::nullopt;
}

} // namespace fieldbook
