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
    std::error_code error;
    if (!stream) // streams tell no reasons of their own
        error.assign(errno != 0 ? errno : EIO, std::generic_category());
    else
        std::filesystem::rename(draft, file, error);
    if (!error)
        return {};
    std::error_code ignored;
    std::filesystem::remove(draft, ignored);
    return error.message();
}

} // namespace fieldbook
