#pragma once

/// @file
/// Bodies that are too large to be held in memory.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/BodyFile.hpp"
#include "Orrenby/Platform/Net/BodyStreamError.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

template <class Success, class Failure> class Result;

/// A body made of bytes and of files, which are read only when their turn comes.
///
/// It is first put together, then read into the caller's buffer, piece by piece, as a transport asks for it.
/// Its length is known before. Of a file only the path and what tells it from another are kept: its length,
/// when it was written, which file it is. A file that is not the same any more when its turn comes is an
/// error, never a body of another length or content than was announced.
///
/// @snippet Tests/Platform/Net/BodyStreamTests.cpp Reading a body piece by piece
///
/// At most one file is open at a time, and nothing of it is kept: reading a body of any size takes the memory
/// of the caller's buffer. Reading blocks as files do. Movable, not copyable; one that was moved from is
/// empty. Not synchronised.
class ORRENBY_EXPORT BodyStream {
public:
    /// Takes how many bytes were read and how many there are; called by who reads.
    using ProgressHandler = UniqueFunction<void(std::uint64_t offset, std::uint64_t length)>;

    /// An empty body.
    BodyStream() noexcept;
    BodyStream(BodyStream&& other) noexcept;
    BodyStream& operator=(BodyStream&& other) noexcept;
    ~BodyStream();

    /// Adds bytes at the end, which the body keeps.
    void append(Data bytes);
    void append(std::string_view text);

    /// Adds all of another body, wherever that was.
    void append(BodyStream other);

    /// Adds a regular file at the end, as long as it is now.
    ///
    /// Throws `BodyStreamError` for a file that cannot be opened now, or is none; the body stays as it was. A
    /// path that is relative must still mean the same when the file is read. An empty file adds nothing.
    /// Include Result.hpp to call the `try` forms.
    void appendFile(const std::string& path);
    Result<Void, BodyStreamError> tryAppendFile(const std::string& path);

    /// In bytes.
    std::uint64_t length() const noexcept { return m_length; }

    /// How much has been read, or skipped, in bytes.
    std::uint64_t offset() const noexcept { return m_offset; }

    /// Whether nothing is left to read.
    bool isAtEnd() const noexcept { return m_offset == m_length; }

    /// Fills the buffer with the next bytes and gives their number, which is less than the buffer takes only
    /// at the end, and 0 there.
    ///
    /// Throws `BodyStreamError` when a file is not what it was. The offset then stays where it was before the
    /// call; what is in the buffer is undefined.
    std::size_t read(std::span<std::byte> buffer);
    Result<std::size_t, BodyStreamError> tryRead(std::span<std::byte> buffer);

    /// Begins again.
    void restart() noexcept;

    /// Goes on from any offset, forward or back: to where a transport has to take up an upload. Whether there
    /// is such an offset; the end is one. Costs the same everywhere.
    [[nodiscard]] bool restart(std::uint64_t offset) noexcept;

    /// Calls the handler after each read that gave bytes, with offset and length. One handler; an empty one
    /// ends that. It may restart the body, but neither replace nor end it.
    void setProgressHandler(ProgressHandler handler) { m_progress = std::move(handler); }

    /// `1024 of 4096 bytes`
    std::string description() const;

private:
    struct Piece;

    void addPiece(Piece piece);
    std::size_t pieceAt(std::uint64_t offset) const noexcept;
    void readPiece(std::size_t index, std::uint64_t offset, std::span<std::byte> buffer);

    std::vector<Piece> m_pieces; ///< None of them empty.
    std::uint64_t m_length = 0;
    std::uint64_t m_offset = 0;
    detail::BodyFile m_file; ///< Open for the piece `m_filePiece`, or closed.
    std::size_t m_filePiece = 0;
    ProgressHandler m_progress;
};

} // namespace orrenby
