#pragma once

/// @file
/// A request that waits in an outbox.

#include "Orrenby/Foundation/BaseManagedObject.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/BodyStream.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// What becomes of a request of an outbox.
enum class OutboxState : std::uint8_t {
    Pending, ///< It waits for its turn, or for its time.
    Sending, ///< Somebody began an attempt and has not said how it ended.
    GivenUp  ///< It is kept, and not sent again until somebody puts it back.
};

/// A request that an `Outbox` keeps, with all that is known of the attempts to send it.
///
/// It is only read here; the outbox changes it. The values can be observed under the names "state",
/// "attempts", "notBefore" and "reason".
///
/// @snippet Tests/Foundation/Outbox/OutboxEntryTests.cpp Reading what waits
///
/// The request and its body are read from the store when they are asked for, each time anew; a list of
/// entries holds no bodies. Every value that is read may throw a `StoreError`, as those of all stored
/// objects.
///
/// Use from the queue of its context.
class ORRENBY_EXPORT OutboxEntry : public BaseManagedObject {
public:
    using BaseManagedObject::BaseManagedObject;
    ~OutboxEntry() override;

    /// Whether it waits, is being sent, or was given up.
    OutboxState state() const;

    /// How often it was begun. Counted and saved before each attempt, so one that ended with the process
    /// counts too. Never goes back.
    std::int64_t attempts() const;

    /// What the request was put in under, to be there only once.
    std::optional<std::string> key() const;

    /// When it was put in, by the clock of the world.
    Date addedAt() const;
    /// When it is due; nothing when it is due at once.
    std::optional<Date> notBefore() const;
    /// When the attempt began that is going on.
    std::optional<Date> begunAt() const;
    /// Why the latest attempt failed, or why the request was given up; nothing before that.
    std::optional<std::string> reason() const;

    /// As it is sent: "GET" and so on.
    std::string method() const;

    /// Where the request goes.
    URL url() const;
    /// In bytes, files included, as it was when the request was put in. Without a body 0.
    std::int64_t bodyLength() const;

    /// Whether the body is to be read from `body`, because it is made of files, and `request` comes without.
    bool hasStreamedBody() const;

    /// The request as it was put in: address, method, header fields in their spelling and order, time limit,
    /// and the body if it is one of bytes.
    ///
    /// Throws a `StoreError` of the kind `Corrupt` when the store holds something that is no request.
    URLRequest request() const;

    /// The whole body, to be read piece by piece: the same bytes in every attempt, boundaries included. Empty
    /// when there is none.
    ///
    /// Throws `BodyStreamError` when a file is missing, or has another length or time of writing than it had
    /// when the request was put in: `Changed`, `Shrunk`. A `StoreError` as `request`.
    BodyStream body() const;

private:
    /// What the store has of the body.
    std::optional<Data> content() const;
};

} // namespace orrenby
