#pragma once

/// @file
/// The bytes around the payloads of multipart bodies.
///
/// Not in the umbrella header: it serves the operations that write such bodies.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What stands before a payload and what after it. Every body with one payload is these three in turn,
/// whether it is put together in memory or read from a file bit by bit.
struct MultipartFrame {
    std::string before;
    std::string after;
};

/// The frame of one part. Takes one new identifier, for the name of the file, unless the type is exactly
/// "text/plain".
MultipartFrame bodyPartFrame(std::string_view key, std::string_view boundary, std::string_view contentType);

/// What ends a body.
std::string closingDelimiter(std::string_view boundary);

/// What an upload says besides its payload.
struct UploadFields {
    std::optional<std::int64_t> pendingMediaCount = std::nullopt;
    std::span<const std::string> photoIDs = {};
};

/// "Boundary-" and a new identifier.
std::string newBoundary();

/// The frame of a whole upload, the closing delimiter included. Takes one new identifier, for the name of the
/// file.
MultipartFrame uploadFrame(std::string_view boundary, std::string_view mimetype, const UploadFields& fields);

} // namespace orrenby::detail
