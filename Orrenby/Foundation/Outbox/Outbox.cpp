#include "Orrenby/Foundation/Outbox/Outbox.hpp"

#include "Orrenby/Foundation/Outbox/OutboxRemoval.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/World/UUIDSource.hpp"
#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <variant>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// What changes in the life of an entry.
constexpr std::array<std::string_view, 6> changingKeys = {
    "state", "attempts", "notBefore", "begunAt", "reason", "sender"};

Any stored(OutboxState state) { return Any(static_cast<std::int64_t>(state)); }

NSPredicate isIn(OutboxState state) { return PredicateKey("state") == stored(state); }

/// Makes a change and saves it. Whether it is the entry's last word: false when somebody else saved first,
/// and the entry is as they left it. After any other failure it is what it was before.
template <class Work>
bool saved(const Ref<NSManagedObjectContext>& context, const Ref<OutboxEntry>& entry, Work&& work)
{
    std::vector<Any> before;
    for (const auto key : changingKeys)
        before.push_back(entry->value(key));
    const auto undo = [&] {
        for (std::size_t index = 0; index < changingKeys.size(); ++index)
            entry->setValue(changingKeys[index], before[index]);
    };
    try {
        work();
        context->save();
        return true;
    } catch (const StoreError& error) {
        undo();
        if (!detail::isConflictOf(error, entry))
            throw;
        if (!detail::refreshIfThere(*context, entry)) {
            context->delete_(entry);
            context->save();
        }
        return false;
    } catch (...) {
        undo();
        throw;
    }
}

} // namespace

Outbox::Outbox(Ref<NSManagedObjectContext> context, OutboxSettings settings)
    : m_context(std::move(context))
    , m_settings(settings)
    // Not from the current world: two processes that tests hold still must differ.
    , m_sender(UUIDSource::system()->next())
{
    const auto& model = m_context->persistentStore()->model();
    if (model->entity(entityName) == nullptr || model->entity(bodyEntityName) == nullptr)
        fatalError("The model has no entities of an outbox", "Foundation/Outbox");
}

void Outbox::requireNoParent() const
{
    if (m_context->parent() != nullptr)
        fatalError("What a context with a parent saves is not kept yet", "Foundation/Outbox");
}

void Outbox::requireOwn(const Ref<OutboxEntry>& entry) const
{
    requireNoParent();
    if (entry == nullptr || entry->managedObjectContext() != m_context)
        fatalError("Only entries of the outbox's context can be used", "Foundation/Outbox");
}

bool Outbox::isDuplicate(const OutboxEntry& entry) const
{
    const auto key = entry.key();
    if (!key)
        return false;
    const auto first = m_context->fetch(
        {.entity = std::string(entityName), .predicate = PredicateKey("key") == Any(*key), .fetchLimit = 1});
    return !first.empty() && first.front().get() != &entry;
}

bool Outbox::isSentHere(const OutboxEntry& entry) const
{
    return entry.state() == OutboxState::Sending && entry.value("sender") == Any(m_sender);
}

Ref<OutboxEntry> Outbox::firstPending(NSFetchRequest request) const
{
    requireNoParent();
    request.entity = entityName;
    request.fetchLimit = 1;
    for (;; ++request.fetchOffset) {
        const auto found = m_context->fetch<OutboxEntry>(request);
        if (found.empty())
            return nullptr;
        if (!found.front()->isInserted() && !isDuplicate(*found.front()))
            return found.front();
    }
}

Ref<OutboxEntry> Outbox::next(Date now) const
{
    const auto notBefore = PredicateKey("notBefore");
    return firstPending(
        {.predicate = isIn(OutboxState::Pending) && (notBefore == Any() || notBefore <= Any(now))});
}

std::optional<Date> Outbox::dueDate() const
{
    const auto entry = firstPending(
        {.predicate = isIn(OutboxState::Pending), .sortDescriptors = {{"notBefore"}}});
    if (entry == nullptr)
        return std::nullopt;
    return entry->notBefore().value_or(Date::distantPast());
}

bool Outbox::begin(const Ref<OutboxEntry>& entry, Date now)
{
    requireOwn(entry);
    if (entry->isDeleted() || entry->state() != OutboxState::Pending)
        return false;
    return saved(m_context, entry, [&] {
        std::int64_t attempts = 0;
        if (__builtin_add_overflow(entry->attempts(), 1, &attempts))
            attempts = entry->attempts();
        entry->setValue("state", stored(OutboxState::Sending));
        entry->setValue("attempts", attempts);
        entry->setValue("notBefore", Any());
        entry->setValue("begunAt", now);
        entry->setValue("sender", m_sender);
    });
}

Ref<OutboxEntry> Outbox::take(Date now)
{
    for (;;) {
        auto entry = next(now);
        if (entry == nullptr || begin(entry, now))
            return entry;
    }
}

bool Outbox::finish(const Ref<OutboxEntry>& entry)
{
    requireOwn(entry);
    return detail::removeFromOutbox(m_context, entry);
}

bool Outbox::retry(const Ref<OutboxEntry>& entry, Date notBefore, std::string_view reason)
{
    requireOwn(entry);
    if (entry->isDeleted() || !isSentHere(*entry))
        return false;
    return saved(m_context, entry, [&] {
        entry->setValue("state", stored(OutboxState::Pending));
        entry->setValue("notBefore", notBefore == Date::distantPast() ? Any() : Any(notBefore));
        entry->setValue("begunAt", Any());
        entry->setValue("sender", Any());
        entry->setValue("reason", reason);
    });
}

std::optional<Date> Outbox::retryOrGiveUp(
    const Ref<OutboxEntry>& entry, const OutboxSchedule& schedule, std::string_view reason, Date now)
{
    requireOwn(entry);
    constexpr std::int64_t mostWithJitter = 32;
    const bool hasJitter = std::holds_alternative<Retry::ExponentialJitter>(schedule.method);
    Retry retries(schedule.interval, hasJitter ? std::min(schedule.limit, mostWithJitter) : schedule.limit,
        schedule.method);
    retries.setCount(std::max<std::int64_t>(entry->attempts(), 1) - 1);
    const auto delay = retries.nextInterval();
    if (!delay) {
        if (!entry->isDeleted() && isSentHere(*entry))
            giveUp(entry, reason);
        return std::nullopt;
    }
    return retry(entry, now + *delay, reason) ? std::optional(now + *delay) : std::nullopt;
}

bool Outbox::giveUp(const Ref<OutboxEntry>& entry, std::string_view reason)
{
    requireOwn(entry);
    if (entry->isDeleted() || !(entry->state() == OutboxState::Pending || isSentHere(*entry)))
        return false;
    return saved(m_context, entry, [&] {
        entry->setValue("state", stored(OutboxState::GivenUp));
        entry->setValue("notBefore", Any());
        entry->setValue("begunAt", Any());
        entry->setValue("sender", Any());
        entry->setValue("reason", reason);
    });
}

bool Outbox::putBack(const Ref<OutboxEntry>& entry, Date notBefore)
{
    requireOwn(entry);
    if (entry->isDeleted() || entry->state() != OutboxState::GivenUp)
        return false;
    return saved(m_context, entry, [&] {
        entry->setValue("state", stored(OutboxState::Pending));
        entry->setValue("notBefore", notBefore == Date::distantPast() ? Any() : Any(notBefore));
    });
}

std::size_t Outbox::recover(Date begunBefore)
{
    requireNoParent();
    std::size_t count = 0;
    for (const auto& entry : entries(OutboxState::Sending)) {
        if (isSentHere(*entry) || !(entry->begunAt().value_or(Date::distantPast()) < begunBefore))
            continue;
        const bool isRecovered = saved(m_context, entry, [&] {
            entry->setValue("state", stored(OutboxState::Pending));
            entry->setValue("begunAt", Any());
            entry->setValue("sender", Any());
        });
        count += isRecovered ? 1 : 0;
    }
    return count;
}

NSFetchRequest Outbox::request(std::optional<OutboxState> state)
{
    return {.entity = std::string(entityName), .predicate = state ? isIn(*state) : NSPredicate()};
}

std::vector<Ref<OutboxEntry>> Outbox::entries(std::optional<OutboxState> state) const
{
    return m_context->fetch<OutboxEntry>(request(state));
}

OutboxCounts Outbox::counts() const { return OutboxCounts::of(entries()); }

OutboxCounts OutboxCounts::of(const std::vector<Ref<OutboxEntry>>& entries)
{
    OutboxCounts counts;
    for (const auto& entry : entries)
        switch (entry->state()) {
        case OutboxState::Pending:
            ++counts.pending;
            break;
        case OutboxState::Sending:
            ++counts.sending;
            break;
        case OutboxState::GivenUp:
            ++counts.givenUp;
            break;
        }
    return counts;
}

std::string OutboxCounts::description() const
{
    return std::to_string(pending) + " pending, " + std::to_string(sending) + " sending, "
        + std::to_string(givenUp) + " given up";
}

} // namespace orrenby
