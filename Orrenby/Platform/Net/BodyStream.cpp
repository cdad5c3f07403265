#include "Orrenby/Platform/Net/BodyStream.hpp"

#include "Orrenby/Platform/Objects/Result.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Bytes, or a file when there is a path.
struct BodyStream::Piece {
    Data bytes = {};
    std::string path = {};
    detail::FileState file = {};
    std::uint64_t begin = 0; ///< In the body.

    std::uint64_t size() const noexcept { return path.empty() ? bytes.size() : file.size; }
};

BodyStream::BodyStream() noexcept = default;

BodyStream::BodyStream(BodyStream&& other) noexcept
    : m_pieces(std::exchange(other.m_pieces, {}))
    , m_length(std::exchange(other.m_length, 0))
    , m_offset(std::exchange(other.m_offset, 0))
    , m_file(std::move(other.m_file))
    , m_filePiece(other.m_filePiece)
    , m_progress(std::move(other.m_progress))
{}

BodyStream& BodyStream::operator=(BodyStream&& other) noexcept
{
    if (this != &other) {
        m_pieces = std::exchange(other.m_pieces, {});
        m_length = std::exchange(other.m_length, 0);
        m_offset = std::exchange(other.m_offset, 0);
        m_file = detail::BodyFile(std::move(other.m_file));
        m_filePiece = other.m_filePiece;
        m_progress = std::move(other.m_progress);
    }
    return *this;
}

BodyStream::~BodyStream() = default;

void BodyStream::addPiece(Piece piece)
{
    const auto size = piece.size();
    if (size == 0)
        return;
    piece.begin = m_length;
    m_pieces.push_back(std::move(piece));
    m_length += size;
}

void BodyStream::append(Data bytes) { addPiece({.bytes = std::move(bytes)}); }

void BodyStream::append(std::string_view text) { append(dataFromText(text)); }

void BodyStream::append(BodyStream other)
{
    const auto count = m_pieces.size() + other.m_pieces.size();
    if (m_pieces.capacity() < count) // all of them are added, or none
        m_pieces.reserve(std::max(count, 2 * m_pieces.capacity()));
    for (auto& piece : other.m_pieces)
        addPiece(std::move(piece));
}

void BodyStream::appendFile(const std::string& path)
{
    addPiece({.path = path, .file = detail::BodyFile(path).state()});
}

Result<Void, BodyStreamError> BodyStream::tryAppendFile(const std::string& path)
{
    try {
        appendFile(path);
        return Result<Void, BodyStreamError>::success();
    } catch (const BodyStreamError& error) {
        return Result<Void, BodyStreamError>::failure(error);
    }
}

std::size_t BodyStream::pieceAt(std::uint64_t offset) const noexcept
{
    const auto isBehind = [](std::uint64_t place, const Piece& piece) { return place < piece.begin; };
    const auto behind = std::upper_bound(m_pieces.begin(), m_pieces.end(), offset, isBehind);
    return static_cast<std::size_t>(behind - m_pieces.begin()) - 1;
}

void BodyStream::readPiece(std::size_t index, std::uint64_t offset, std::span<std::byte> buffer)
{
    const auto& piece = m_pieces[index];
    if (piece.path.empty()) {
        std::copy_n(piece.bytes.begin() + static_cast<std::ptrdiff_t>(offset), buffer.size(), buffer.begin());
        return;
    }
    if (!m_file.isOpen() || m_filePiece != index) {
        m_file = detail::BodyFile(); // before the next is opened
        m_file = detail::BodyFile(piece.path, piece.file);
        m_filePiece = index;
    }
    m_file.read(piece.path, offset, buffer);
    if (offset + buffer.size() == piece.size())
        m_file = detail::BodyFile();
}

std::size_t BodyStream::read(std::span<std::byte> buffer)
{
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), m_length - m_offset));
    if (count == 0)
        return 0;

    auto offset = m_offset;
    auto rest = buffer.first(count);
    for (auto index = pieceAt(offset); !rest.empty(); ++index) {
        const auto& piece = m_pieces[index];
        const auto within = offset - piece.begin;
        const auto part = rest.first(
            static_cast<std::size_t>(std::min<std::uint64_t>(rest.size(), piece.size() - within)));
        readPiece(index, within, part);
        rest = rest.subspan(part.size());
        offset += part.size();
    }
    m_offset = offset;
    if (m_progress)
        m_progress(m_offset, m_length);
    return count;
}

Result<std::size_t, BodyStreamError> BodyStream::tryRead(std::span<std::byte> buffer)
{
    try {
        return Result<std::size_t, BodyStreamError>::success(read(buffer));
    } catch (const BodyStreamError& error) {
        return Result<std::size_t, BodyStreamError>::failure(error);
    }
}

void BodyStream::restart() noexcept { m_offset = 0; }

bool BodyStream::restart(std::uint64_t offset) noexcept
{
    if (offset > m_length)
        return false;
    m_offset = offset;
    return true;
}

std::string BodyStream::description() const
{
    return std::to_string(m_offset) + " of " + std::to_string(m_length) + " bytes";
}

} // namespace orrenby
