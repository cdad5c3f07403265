#pragma once

/// @file
/// What waits in an outbox, as a stream.

#include "Orrenby/Foundation/NSManagedObjectContext+Observe.hpp"
#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// The entries of an outbox, or those in one state, now and after each save that changes them: `observe` of
/// the outbox's context, with all that is said there.
///
/// @snippet Tests/Foundation/Outbox/Outbox+ObserveTests.cpp Observing what waits
///
/// Bodies are not read. What other processes save is not seen.
[[nodiscard]] ORRENBY_EXPORT Streams::AnyPublisher<std::vector<Ref<OutboxEntry>>, StoreError> observe(
    const Outbox& outbox, std::optional<OutboxState> state = std::nullopt);

/// The counts, now and after each save that changes an entry; the same counts are not sent twice in a row.
[[nodiscard]] ORRENBY_EXPORT Streams::AnyPublisher<OutboxCounts, StoreError> observeCounts(
    const Outbox& outbox);

} // namespace orrenby
