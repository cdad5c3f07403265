#pragma once

/// @file
/// Why a body could not be read.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A file of a body that cannot be read any more, or never could: which, and why.
///
/// A plain value. Not synchronised.
class ORRENBY_EXPORT BodyStreamError final : public CustomNSError<BodyStreamError> {
public:
    /// What was wrong with the file.
    enum class Kind : std::uint8_t {
        CannotOpen,    ///< There is no such file, or it may not be read.
        NoRegularFile, ///< A folder, a device, a pipe: nothing whose length is known.
        Changed,       ///< Not the file any more that was added to the body, or not its content.
        Shrunk,        ///< The file ended before the length that was announced.
        CannotRead     ///< The system failed to read on.
    };

    /// @param systemError  What the system said, as `errno` numbers it; 0 when it said nothing.
    BodyStreamError(Kind kind, std::string path, int systemError = 0)
        : m_kind(kind)
        , m_path(std::move(path))
        , m_systemError(systemError)
    {}

    /// Which of the kinds it is.
    Kind kind() const noexcept { return m_kind; }

    /// The path as it was given when the file was added.
    const std::string& path() const noexcept { return m_path; }

    /// What the system said, as `errno` numbers it; 0 when it said nothing.
    int systemError() const noexcept { return m_systemError; }

    /// `The file "photo.jpg" cannot be opened: No such file or directory`
    std::string description() const override;

    std::int64_t errorCode() const { return static_cast<std::int64_t>(m_kind) + 1; }
    Dictionary errorUserInfo() const;

    friend bool operator==(const BodyStreamError& first, const BodyStreamError& second) noexcept
    {
        return first.m_kind == second.m_kind && first.m_path == second.m_path
            && first.m_systemError == second.m_systemError;
    }

private:
    Kind m_kind;
    std::string m_path;
    int m_systemError;
};

} // namespace orrenby
