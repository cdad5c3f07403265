#pragma once

/// @file
/// Requests that are kept in a store until they were delivered.

#include "Orrenby/Foundation/Outbox/OutboxEntry.hpp"
#include "Orrenby/Foundation/Outbox/OutboxOptions.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class AnyError;
template <class Success, class Failure> class Result;

/// What `Outbox::add` did.
struct OutboxAddition {
    Ref<OutboxEntry> entry = {}; ///< The request as it is kept.
    /// False when there was a request of that key already: then `entry` is that one, as it is.
    bool isNew = false;
};

/// How many requests are in an outbox.
///
/// A plain value. Not synchronised.
struct OutboxCounts {
    std::size_t pending = 0; ///< Waiting, due or not.
    std::size_t sending = 0; ///< An attempt is going on.
    std::size_t givenUp = 0; ///< Not tried again by itself.

    /// Counts entries by their state. Linear.
    ORRENBY_EXPORT static OutboxCounts of(const std::vector<Ref<OutboxEntry>>& entries);
    /// `2 pending, 0 sending, 1 given up`
    ORRENBY_EXPORT std::string description() const;

    friend bool operator==(const OutboxCounts&, const OutboxCounts&) = default;
};

/// Requests that survive the end of the process, with the number of their attempts, until they were
/// delivered.
///
/// The requests are objects of the application's own store: its model takes `entity()` and `bodyEntity()` in,
/// and a request is saved together with the change that causes it, both or neither.
///
/// @snippet Tests/Foundation/Outbox/OutboxAddingTests.cpp Putting a request in
///
/// A store that is there already gets them by a new version of its model; see `migrateStore`.
///
/// Whoever sends takes a request out, sends it with whatever transport there is, and says how it ended:
///
/// @snippet Tests/Foundation/Outbox/OutboxTests.cpp Sending what waits
///
/// **At least once**: a request is never lost, and may be delivered twice. When the process ends after the
/// service received it and before `finish`, nobody knows, and it is sent again. A service that must not act
/// twice needs to recognise it: see `OutboxOptions::addsIdempotencyKey`.
///
/// Requests that are due come in the order in which they were first saved. One that waits for its time does
/// not hold up those behind it.
///
/// Header fields and bodies are kept as they are, readable for whoever reads the file. Tokens are better
/// added when a request is sent (`signed_`) than kept, which also keeps them from growing old.
///
/// **What is saved**: `add` only changes the context, whose own save keeps the request. Everything else saves
/// the context, whatever else is unsaved there included, before it returns. Whoever sends therefore does so
/// with a context of its own on the same store, without a parent; with one it is a programming error. When
/// a save fails, the `StoreError` is thrown, and the request is what it was before: the call can be repeated.
///
/// **Several processes** may send from one file. A request is begun by one of them only: of two that begin it
/// at once, one saves first and the other is told.
///
/// Searching for a key, the next request and the limit reads the list of requests without their bodies: time
/// linear in their number.
///
/// A handle: copies are one sender. Its entries are those of its context; those of another one are a
/// programming error. Use from the queue of the context.
class ORRENBY_EXPORT Outbox {
public:
    static constexpr std::string_view entityName = "OutboxEntry";    ///< Of the requests.
    static constexpr std::string_view bodyEntityName = "OutboxBody"; ///< Of the bodies.

    /// The entities that the model of the store needs, both.
    static EntityOptions entity();
    static EntityOptions bodyEntity();

    /// A context whose model lacks one of the entities is a programming error.
    explicit Outbox(Ref<NSManagedObjectContext> context, OutboxSettings settings = {});

    /// What it was made with; where it keeps the requests.
    const Ref<NSManagedObjectContext>& context() const noexcept { return m_context; }

    /// Puts a request in, to be kept with the next save of the context, which may have a parent.
    ///
    /// @snippet Tests/Foundation/Outbox/OutboxAddingTests.cpp Putting a request in once
    ///
    /// With a key that is in the outbox already, given up or not, nothing is added. Should two processes or
    /// contexts save the same key at once, the one saved first is sent, and the other leaves with it, unsent.
    ///
    /// Of files the path, the length and the time of writing are kept; they must stay as they are until the
    /// request was delivered. Throws `OutboxError` for what is no request or too much of one,
    /// `BodyStreamError` for a file that cannot be opened, `StoreError`; then nothing was added. Include
    /// Result.hpp and AnyError.hpp to call the other form.
    OutboxAddition add(const URLRequest& request, const OutboxOptions& options = {});
    Result<OutboxAddition, AnyError> tryAdd(const URLRequest& request, const OutboxOptions& options = {});

    /// The request that was saved first of those that are due and that nobody sends; empty when there is
    /// none. It is not taken out by that.
    Ref<OutboxEntry> next(Date now = Date::now()) const;

    /// Begins an attempt: counts it and saves that, before anything is sent.
    ///
    /// Whether the request is the caller's to send now. It is not when it is not pending, or when somebody
    /// else was faster; then the entry shows what became of it. Whether it is due is not asked.
    [[nodiscard]] bool begin(const Ref<OutboxEntry>& entry, Date now = Date::now());

    /// `begin` of what `next` gives, and of the one after that when somebody else was faster.
    [[nodiscard]] Ref<OutboxEntry> take(Date now = Date::now());

    /// It was delivered: removes it, whatever others did to it meanwhile. Whether it was still there. A
    /// failure leaves the removal in the context, for the next save or the next call.
    bool finish(const Ref<OutboxEntry>& entry);

    /// The attempt failed: the request waits, and keeps its count. Whether it was being sent by this outbox;
    /// otherwise nothing changes.
    ///
    /// @param notBefore  `distantPast` for at once.
    bool retry(const Ref<OutboxEntry>& entry, Date notBefore, std::string_view reason);

    /// `retry` after the delay that the schedule has for the count of attempts, or `giveUp` when it has none
    /// left.
    ///
    /// @snippet Tests/Foundation/Outbox/OutboxTests.cpp Trying again by a schedule
    ///
    /// @returns When it is due again; nothing when it was given up, or was not being sent by this outbox.
    std::optional<Date> retryOrGiveUp(const Ref<OutboxEntry>& entry, const OutboxSchedule& schedule,
        std::string_view reason, Date now = Date::now());

    /// Keeps the request without sending it any more. Whether it was pending, or being sent by this outbox;
    /// otherwise nothing changes.
    bool giveUp(const Ref<OutboxEntry>& entry, std::string_view reason);

    /// Lets a given-up request be sent again; it keeps its count and reason. Whether it was given up.
    bool putBack(const Ref<OutboxEntry>& entry, Date notBefore = Date::distantPast());

    /// Removes a request in whatever state it is; see `finish`.
    bool remove(const Ref<OutboxEntry>& entry) { return finish(entry); }

    /// Makes pending again what others were sending: due at once, with its count. To be called after opening
    /// the store, for what a process that was killed had begun.
    ///
    /// @snippet Tests/Foundation/Outbox/OutboxTests.cpp Going on after the process was killed
    ///
    /// @param begunBefore  With other processes that may still be sending: the present moment minus what an
    /// attempt takes at most. What they send for longer is sent twice.
    /// @returns How many.
    std::size_t recover(Date begunBefore = Date::distantFuture());

    /// When `next` will have something, unless anything changes before: a moment in the past when it has
    /// something now, nothing when nothing is pending.
    std::optional<Date> dueDate() const;

    /// Asks for all requests, those not yet saved last, or for those in one state.
    static NSFetchRequest request(std::optional<OutboxState> state = std::nullopt);

    /// What `request` asks for.
    std::vector<Ref<OutboxEntry>> entries(std::optional<OutboxState> state = std::nullopt) const;
    OutboxCounts counts() const;

private:
    Ref<OutboxEntry> firstPending(NSFetchRequest request) const;
    bool isDuplicate(const OutboxEntry& entry) const;
    bool isSentHere(const OutboxEntry& entry) const;
    void requireNoParent() const;
    void requireOwn(const Ref<OutboxEntry>& entry) const;

    Ref<NSManagedObjectContext> m_context;
    OutboxSettings m_settings;
    UUID m_sender;
};

} // namespace orrenby

template <> struct std::hash<orrenby::OutboxCounts> {
    std::size_t operator()(const orrenby::OutboxCounts& counts) const noexcept
    {
        return (counts.pending * 31 + counts.sending) * 31 + counts.givenUp;
    }
};
