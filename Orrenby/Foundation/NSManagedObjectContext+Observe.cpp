#include "Orrenby/Foundation/NSManagedObjectContext+Observe.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Observing/NotificationCenter.hpp"
#include <algorithm>
#include <atomic>
#include <optional>
#include <unordered_set>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

using Objects = std::vector<Ref<NSManagedObject>>;

class FetchObservation : public std::enable_shared_from_this<FetchObservation> {
public:
    FetchObservation(Ref<NSManagedObjectContext> context, NSFetchRequest request, FetchReceiver receiver)
        : m_context(std::move(context))
        , m_request(std::move(request))
        , m_receiver(std::move(receiver))
    {}

    void begin()
    {
        // First, so that no save is missed between the two.
        m_token = NotificationCenter::defaultCenter()->addObserver(
            {.name = NSManagedObjectContextDidSaveNotification},
            [self = shared_from_this()](const Notification& didSave) { self->hear(didSave); });
        fetch(nullptr);
    }

    void end()
    {
        m_hasEnded = true;
        NotificationCenter::defaultCenter()->removeObserver(m_token);
    }

private:
    /// On the thread that saves.
    void hear(const Notification& didSave)
    {
        const auto sender = didSave.object<NSManagedObjectContext>();
        if (m_hasEnded || sender == nullptr || sender->persistentStore() != m_context->persistentStore())
            return;
        if (sender == m_context)
            return fetch(&didSave);
        const bool isChild = sender->parent() == m_context;
        const bool isInStore = sender->parent() == nullptr;
        if (!isChild && !isInStore && sender != m_context->parent())
            return;
        m_context->perform([self = shared_from_this(), didSave, isChild] {
            if (!self->m_hasEnded)
                self->takeOver(didSave, isChild);
        });
    }

    /// What a child has saved is in the context already.
    void takeOver(const Notification& didSave, bool isChild)
    {
        try {
            if (!isChild)
                m_context->mergeChanges(didSave);
        } catch (const StoreError& error) {
            return m_receiver.receiveError(error);
        }
        fetch(&didSave);
    }

    void fetch(const Notification* didSave)
    {
        try {
            auto objects = m_context->fetch(m_request);
            const bool isChanged = !m_latest || *m_latest != objects
                || (didSave != nullptr && hasUpdated(*didSave, objects));
            m_latest = objects;
            if (isChanged)
                m_receiver.receiveObjects(std::move(objects));
        } catch (const StoreError& error) {
            // The next result is a change again.
            m_latest = std::nullopt;
            m_receiver.receiveError(error);
        }
    }

    static bool hasUpdated(const Notification& didSave, const Objects& objects)
    {
        const auto* const list = didSave.userInfo()["updated"].get<Array>();
        if (list == nullptr || list->empty())
            return false;
        std::unordered_set<NSManagedObjectID> updated;
        for (const Any& element : *list)
            if (const auto* const objectID = element.get<NSManagedObjectID>())
                updated.insert(*objectID);
        return std::any_of(objects.begin(), objects.end(),
            [&](const auto& object) { return updated.contains(object->objectID()); });
    }

    const Ref<NSManagedObjectContext> m_context;
    const NSFetchRequest m_request;
    FetchReceiver m_receiver;
    Ref<NotificationToken> m_token;
    std::optional<Objects> m_latest;
    std::atomic<bool> m_hasEnded = false;
};

} // namespace

UniqueFunction<void()> observeFetch(
    const Ref<NSManagedObjectContext>& context, NSFetchRequest request, FetchReceiver receiver)
{
    const auto observation = std::make_shared<FetchObservation>(
        context, std::move(request), std::move(receiver));
    observation->begin();
    return [observation] { observation->end(); };
}

} // namespace orrenby::inline ORRENBY_ABI::detail
