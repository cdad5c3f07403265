#include "Orrenby/Platform/Net/BodyFile.hpp"

#include "Orrenby/Platform/Net/BodyStreamError.hpp"
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Kind = BodyStreamError::Kind;

/// Where systems limit what one call reads, they do so above this.
constexpr std::size_t mostAtOnce = std::size_t(1) << 30U;

FileState stateOf(int descriptor, const std::string& path)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        throw BodyStreamError(Kind::CannotOpen, path, errno);
    if (!S_ISREG(status.st_mode))
        throw BodyStreamError(Kind::NoRegularFile, path);
    return {.device = static_cast<std::uint64_t>(status.st_dev),
        .inode = static_cast<std::uint64_t>(status.st_ino),
        .size = static_cast<std::uint64_t>(status.st_size),
        .modifiedSeconds = status.st_mtim.tv_sec,
        .modifiedNanoseconds = status.st_mtim.tv_nsec};
}

/// Without waiting for whoever may write to a pipe of this name.
int opened(const std::string& path)
{
    if (path.find('\0') != std::string::npos) // the system would open what stands before it
        throw BodyStreamError(Kind::CannotOpen, path, ENOENT);
    int descriptor = -1;
    do
        descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0)
        throw BodyStreamError(Kind::CannotOpen, path, errno);
    return descriptor;
}

} // namespace

BodyFile::BodyFile(const std::string& path)
{
    BodyFile file; // closes when what follows throws
    file.m_descriptor = opened(path);
    file.m_state = stateOf(file.m_descriptor, path);
    *this = std::move(file);
}

BodyFile::BodyFile(const std::string& path, const FileState& expected)
    : BodyFile(path)
{
    check(path, expected);
}

BodyFile::BodyFile(BodyFile&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_state(other.m_state)
{}

BodyFile& BodyFile::operator=(BodyFile&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_state, other.m_state);
    return *this;
}

BodyFile::~BodyFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void BodyFile::check(const std::string& path, const FileState& expected) const
{
    const auto now = stateOf(m_descriptor, path);
    if (now.size < expected.size)
        throw BodyStreamError(Kind::Shrunk, path);
    if (now != expected)
        throw BodyStreamError(Kind::Changed, path);
}

void BodyFile::read(const std::string& path, std::uint64_t offset, std::span<std::byte> buffer) const
{
    while (!buffer.empty()) {
        const auto count = ::pread(
            m_descriptor, buffer.data(), std::min(buffer.size(), mostAtOnce), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw BodyStreamError(Kind::CannotRead, path, errno);
        if (count == 0)
            throw BodyStreamError(Kind::Shrunk, path);
        buffer = buffer.subspan(static_cast<std::size_t>(count));
        offset += static_cast<std::uint64_t>(count);
    }
    check(path, m_state);
}

} // namespace orrenby::detail
