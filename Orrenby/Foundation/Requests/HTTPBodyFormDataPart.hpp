#pragma once

/// @file
/// Bytes to be uploaded.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Bytes and their media type: a photo or a video that is to be uploaded.
///
/// @snippet Tests/Foundation/Requests/UploadTests.cpp Uploading a photo
///
/// A plain value: copying it copies the bytes. Not synchronised.
struct HTTPBodyFormDataPart {
    Data data = {};            ///< The content of the file.
    std::string mimetype = {}; ///< As it is written in the part's head: `image/jpeg`.

    /// `image/jpeg, 3 bytes`
    ORRENBY_EXPORT std::string description() const;

    friend bool operator==(const HTTPBodyFormDataPart&, const HTTPBodyFormDataPart&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::HTTPBodyFormDataPart> {
    std::size_t operator()(const orrenby::HTTPBodyFormDataPart& value) const noexcept
    {
        const auto bytes = std::string_view(
            reinterpret_cast<const char*>(value.data.data()), value.data.size());
        return std::hash<std::string_view>()(bytes) * 31 + std::hash<std::string>()(value.mimetype);
    }
};
