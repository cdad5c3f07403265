#pragma once

/// @file
/// Names of media types.

#include "Orrenby/Platform/Export.hpp"
#include <string>
#include <string_view>

/// The media types of request bodies.
///
/// @snippet Tests/Foundation/Requests/HTTPMediaTypeTests.cpp Naming a media type
namespace orrenby::inline ORRENBY_ABI::HTTPMediaType {

inline constexpr std::string_view plainText = "text/plain"; ///< Text as it is.
/// Messages in the binary form of protocol buffers.
inline constexpr std::string_view protobuf = "application/x-google-protobuf";
inline constexpr std::string_view json = "application/json"; ///< JSON text.

/// The type of a multipart body whose parts are delimited by `boundary`, which is written as it is: neither
/// quoted nor checked.
ORRENBY_EXPORT std::string multipartFormData(std::string_view boundary);

} // namespace orrenby::HTTPMediaType
