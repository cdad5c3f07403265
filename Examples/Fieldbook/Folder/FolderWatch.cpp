#include "Folder/FolderWatch.hpp"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace fieldbook {

namespace {

using Outcome = orrenby::Result<std::shared_ptr<FolderWatch>, std::string>;

constexpr std::uint32_t wanted = IN_CREATE | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE
    | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

/// Whether a name that was just created will not be followed by a closing writer: a link to what exists.
bool isLink(const std::filesystem::path& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0
        && (S_ISLNK(status.st_mode) || (S_ISREG(status.st_mode) && status.st_nlink > 1));
}

std::optional<FolderChange::Kind> kindOf(const inotify_event& event, const std::filesystem::path& path)
{
    if ((event.mask & IN_Q_OVERFLOW) != 0)
        return FolderChange::Kind::overflow;
    if ((event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT)) != 0)
        return FolderChange::Kind::folderGone;
    if ((event.mask & (IN_MOVED_FROM | IN_DELETE)) != 0)
        return FolderChange::Kind::gone;
    if ((event.mask & (IN_CLOSE_WRITE | IN_MOVED_TO)) != 0)
        return FolderChange::Kind::touched;
    if ((event.mask & IN_CREATE) != 0 && isLink(path))
        return FolderChange::Kind::touched;
    return {};
}

} // namespace

orrenby::Result<std::shared_ptr<FolderWatch>, std::string> FolderWatch::open(
    const std::filesystem::path& folder)
{
    auto descriptor = Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!descriptor || ::inotify_add_watch(descriptor.number(), folder.c_str(), wanted) < 0)
        return Outcome::failure(std::generic_category().message(errno));
    return Outcome::success(std::shared_ptr<FolderWatch>(new FolderWatch(folder, std::move(descriptor))));
}

FolderWatch::FolderWatch(std::filesystem::path folder, Descriptor descriptor)
    : m_folder(std::move(folder))
    , m_descriptor(std::move(descriptor))
{}

std::vector<FolderChange> FolderWatch::read()
{
    std::vector<FolderChange> changes;
    alignas(inotify_event) std::array<char, 16 * 1024> buffer;
    for (;;) {
        const auto length = ::read(descriptor(), buffer.data(), buffer.size());
        if (length <= 0)
            return changes;
        for (const char* next = buffer.data(); next < buffer.data() + length;) {
            inotify_event event{};
            std::memcpy(&event, next, sizeof event);
            // The name is padded with NULs.
            auto file = event.len > 0 ? std::string(next + sizeof event) : std::string();
            if (const auto kind = kindOf(event, m_folder / file))
                changes.push_back({*kind, std::move(file)});
            next += sizeof event + event.len;
        }
    }
}

} // namespace fieldbook
