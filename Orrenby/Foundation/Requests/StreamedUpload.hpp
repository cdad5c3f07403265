#pragma once

/// @file
/// Multipart bodies of files that are too large to be held in memory.

#include "Orrenby/Foundation/Requests/BodyPart.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/BodyStream.hpp"
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A file and the media type of its content: what `HTTPBodyFormDataPart` is for bytes in memory.
///
/// A plain value. Not synchronised.
struct HTTPBodyFile {
    std::string path = {};     ///< Where it lies.
    std::string mimetype = {}; ///< As it is written in the part's head: `image/jpeg`.

    /// `image/jpeg, "photo.jpg"`
    ORRENBY_EXPORT std::string description() const;

    friend bool operator==(const HTTPBodyFile&, const HTTPBodyFile&) = default;
};

/// What an upload says besides its file. Both may be given.
struct StreamedUploadOptions {
    /// How many more files are to come; stands before the file.
    std::optional<std::int64_t> pendingMediaCount = std::nullopt;
    /// Stand after the file. None of them, no field.
    std::vector<std::string> photoIDs = {};
};

/// A body to be sent piece by piece, and the value of the header field "Content-Type" that belongs to it.
struct StreamedUpload {
    std::string contentType = {}; ///< With the boundary of this body.
    BodyStream body = {};         ///< Read once, from its beginning.
};

/// Makes a body that uploads a photo or a video from a file: the same bytes as those of `attaching`, for
/// which the file's content would be read into memory.
///
/// Throws `BodyStreamError` when the file cannot be opened; see there for what may happen to it later.
/// Include Result.hpp to call the other form.
///
/// @snippet Tests/Foundation/Requests/StreamedUploadTests.cpp Uploading a file piece by piece
///
/// Takes two new identifiers. Safe to use from several threads.
ORRENBY_EXPORT StreamedUpload makeStreamedUpload(
    const HTTPBodyFile& media, const StreamedUploadOptions& options = {});
ORRENBY_EXPORT Result<StreamedUpload, BodyStreamError> tryMakeStreamedUpload(
    const HTTPBodyFile& media, const StreamedUploadOptions& options = {});

/// A part whose value is the content of a file; see BodyPart.
struct BodyFilePart {
    std::string_view key = {};         ///< The name of the field.
    std::string_view path = {};        ///< Where the file lies.
    std::string_view boundary = {};    ///< The text between parts, without the hyphens in front of it.
    std::string_view contentType = {}; ///< As it is written in the part's head.
};

/// Adds one part to a body, as `addingBodyPart` adds it to a request. The value is copied; without one,
/// nothing is added.
///
/// @snippet Tests/Foundation/Requests/StreamedUploadTests.cpp Streaming several files
ORRENBY_EXPORT void appendBodyPart(BodyStream& body, const BodyPart& part);

/// Adds a part whose value is read from a file when its turn comes. Throws `BodyStreamError`, and leaves the
/// body as it was, when the file cannot be opened now.
ORRENBY_EXPORT void appendBodyPart(BodyStream& body, const BodyFilePart& part);

/// Adds the closing delimiter of a multipart body, as `closingBody` does.
ORRENBY_EXPORT void appendClosingDelimiter(BodyStream& body, std::string_view boundary);

} // namespace orrenby

template <> struct std::hash<orrenby::HTTPBodyFile> {
    std::size_t operator()(const orrenby::HTTPBodyFile& value) const noexcept
    {
        return std::hash<std::string>()(value.path) * 31 + std::hash<std::string>()(value.mimetype);
    }
};
