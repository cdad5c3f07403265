#pragma once

/// @file
/// How header fields and bodies of requests are written into a store.
///
/// Not in the umbrella header: it serves the outbox.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/BodyStream.hpp"
#include "Orrenby/Platform/Net/HTTPHeaders.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Texts one after the other, each as its length, a colon, its bytes and a comma: `3:a b,0:,`. Whatever bytes
/// they have, they are read back as they were.
ORRENBY_EXPORT void appendText(Data& data, std::string_view text);
/// The texts, which refer to the data; nothing for any other data. Linear.
ORRENBY_EXPORT std::optional<std::vector<std::string_view>> textsFrom(std::span<const std::byte> data);

/// Names and values in turn.
ORRENBY_EXPORT Data dataFromHeaders(const HTTPHeaders& headers);
ORRENBY_EXPORT std::optional<HTTPHeaders> headersFromData(std::span<const std::byte> data);

/// Writes down a body that is made of bytes and of files: of each piece a letter, then its bytes, or its
/// path, length and time of writing in seconds and nanoseconds.
class ORRENBY_EXPORT OutboxBodyWriter {
public:
    void append(std::string_view bytes);

    /// Throws `BodyStreamError` for a file that cannot be opened, or is none.
    void appendFile(const std::string& path);

    /// What is kept in the store.
    const Data& content() const noexcept { return m_content; }
    /// Of the whole body, in bytes.
    std::uint64_t length() const noexcept { return m_length; }

private:
    Data m_content;
    std::uint64_t m_length = 0;
};

/// The body that was written down; nothing for data that is none. Throws `BodyStreamError` for a file that is
/// missing or not what it was.
ORRENBY_EXPORT std::optional<BodyStream> bodyFromData(std::span<const std::byte> data);

} // namespace orrenby::detail
