#pragma once

/// @file
/// A file that a body is read from.
///
/// Not in the umbrella header: it serves `BodyStream`.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What tells the content of a file from another content, as far as a system can tell without reading it.
struct FileState {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;

    friend bool operator==(const FileState&, const FileState&) = default;
};

/// A regular file that is open for reading, or nothing. Its errors are `BodyStreamError`.
///
/// Not synchronised.
class BodyFile {
public:
    BodyFile() noexcept = default;

    /// Opens the file as it is.
    explicit BodyFile(const std::string& path);

    /// Opens the file, which has to be in this state.
    BodyFile(const std::string& path, const FileState& expected);
    BodyFile(BodyFile&& other) noexcept;
    BodyFile& operator=(BodyFile&& other) noexcept;
    ~BodyFile();

    bool isOpen() const noexcept { return m_descriptor >= 0; }
    const FileState& state() const noexcept { return m_state; }

    /// Fills the buffer, and fails unless the file still is in its state afterwards.
    void read(const std::string& path, std::uint64_t offset, std::span<std::byte> buffer) const;

private:
    void check(const std::string& path, const FileState& expected) const;

    int m_descriptor = -1;
    FileState m_state;
};

} // namespace orrenby::detail
