#include "Orrenby/Foundation/Outbox/Outbox+Observe.hpp"

#include "Orrenby/Utilities/Streams/More/Distinct.hpp"

namespace orrenby::inline ORRENBY_ABI {

Streams::AnyPublisher<std::vector<Ref<OutboxEntry>>, StoreError> observe(
    const Outbox& outbox, std::optional<OutboxState> state)
{
    return observe<OutboxEntry>(outbox.context(), outbox.request(state));
}

Streams::AnyPublisher<OutboxCounts, StoreError> observeCounts(const Outbox& outbox)
{
    return Streams::distinct(observe(outbox).map(OutboxCounts::of));
}

} // namespace orrenby
