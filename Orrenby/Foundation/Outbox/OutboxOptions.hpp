#pragma once

/// @file
/// How a request is put into an outbox, and how one is tried again.

#include "Orrenby/Foundation/Requests/StreamedUpload.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Utilities/Retry.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// How much an outbox takes.
struct OutboxSettings {
    /// Requests, given-up ones included. 0 and less take none.
    std::int64_t maximumCount = 10'000;
    /// Bytes that one request's body may have in the store. Files stay where they are and do not count.
    std::int64_t maximumBodyLength = 16 * 1024 * 1024;
};

/// A part of a multipart body: a file, or bytes, not both.
///
/// Key and type are written as they are, without escaping; see BodyPart.
struct OutboxPart {
    std::string key = {};         ///< The name of the field.
    std::string contentType = {}; ///< The media type of the content.
    /// The file. One that is relative is taken from the working directory in which it is put in.
    std::optional<std::string> path = std::nullopt;
    std::optional<Data> data = std::nullopt; ///< The bytes; they are kept in the store.

    friend bool operator==(const OutboxPart&, const OutboxPart&) = default;
};

/// How a request is put in.
struct OutboxOptions {
    /// A request is kept only once under a key, until it was delivered or removed.
    std::optional<std::string> key = std::nullopt;
    /// Not to be sent earlier.
    std::optional<Date> notBefore = std::nullopt;
    /// Whether the request gets a header field "Idempotency-Key" with a new UUID, which stays the same over
    /// all attempts, so that the service can tell a second delivery. One that it has already is kept.
    bool addsIdempotencyKey = false;
    /// The content of a file as the body, and its type as "Content-Type" unless that is empty.
    std::optional<HTTPBodyFile> file = std::nullopt;
    /// A body of the type "multipart/form-data", which sets "Content-Type".
    std::vector<OutboxPart> parts = {};
};

/// How long to wait after each failed attempt, and for how many.
struct OutboxSchedule {
    /// Base delay in seconds.
    double interval = 2;
    /// Further attempts after the first one. A schedule with jitter has at most 32.
    std::int64_t limit = 8;
    Retry::Method method = Retry::Exponential{}; ///< How the waits between the attempts grow.
};

} // namespace orrenby
