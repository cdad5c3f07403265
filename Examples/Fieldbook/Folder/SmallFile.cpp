#include "Folder/SmallFile.hpp"

#include "Terminal/Descriptor.hpp"
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace fieldbook {

namespace {

std::string messageOf(int error) { return std::generic_category().message(error); }

/// Reads to the end or one byte beyond the limit. On failure `errno` tells why.
std::optional<std::string> readAll(int descriptor)
{
    std::string text;
    std::array<char, 16 * 1024> buffer;
    while (text.size() <= fileSizeLimit) {
        const auto length = ::read(descriptor, buffer.data(), buffer.size());
        if (length == 0)
            break;
        if (length > 0)
            text.append(buffer.data(), static_cast<std::size_t>(length));
        else if (errno != EINTR)
            return {};
    }
    return text;
}

} // namespace

std::optional<orrenby::Result<std::string, std::string>> readFile(const std::filesystem::path& path)
{
    using Outcome = orrenby::Result<std::string, std::string>;
    // Not blocking, because opening a pipe would wait for its writer.
    const auto file = Descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return errno == ENOENT ? std::nullopt : std::optional(Outcome::failure(messageOf(errno)));
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return Outcome::failure("not a regular file");
    auto text = readAll(file.number());
    if (!text)
        return Outcome::failure(messageOf(errno));
    if (text->size() > fileSizeLimit)
        return Outcome::failure("larger than " + std::to_string(fileSizeLimit) + " bytes");
    return Outcome::success(std::move(*text));
}

} // namespace fieldbook
