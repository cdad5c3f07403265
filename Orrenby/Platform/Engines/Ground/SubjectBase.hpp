#pragma once

/// @file
/// A source that is pushed from outside: what the subjects of both engines are made of.

#include "Orrenby/Platform/Engines/Ground/Publication.hpp"
#include "Orrenby/Platform/Engines/Ground/TypedSlot.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include <memory>
#include <optional>

namespace orrenby::inline ORRENBY_ABI::detail {

/// A source that forwards what is sent to those who are subscribed at that moment, in the order of their
/// coming.
///
/// A send that meets a delivery of the same subject, from inside a callback or from another thread, is
/// queued: the deliverer delivers it next. So all subscribers see one order, no subscriber is called twice at
/// a time, nothing is lost, and the depth of the stack does not grow. A send to n subscribers is O(n) and
/// allocates only when it has to be queued.
///
/// Safe to use from several threads.
template <class T> class SubjectBase : public Publication<T> {
public:
    explicit SubjectBase(Engine engine)
        : Publication<T>(engine, Subscription::bytesFor<TypedSlot<T>>())
    {}

    void send(Pass<T> value) noexcept
    {
        if (m_list.tryEnter()) [[likely]] {
            deliver(m_list, value);
            m_list.leave(*this, deliverQueued);
        } else
            sendWhileBusy(value);
    }

    /// Ends the stream, behind what is queued. Later sends have no effect, later subscribers get the end and
    /// nothing else.
    void finish() noexcept { finishWith(nullptr); }

    /// Sends a last value and ends the stream; nobody else's value comes between.
    void finish(Pass<T> value) noexcept { finishWith(std::addressof(value)); }

    void connect(Subscription::Builder& builder, Receiver<T>& downstream) const override
    {
        auto& slot = addSlot(builder, downstream);
        m_list.lock();
        const auto joining = m_list.join(slot, false);
        m_list.unlock();
        if (joining == SubscriberList::Joining::Closed)
            downstream.finish();
    }

protected:
    struct QueuedValue final : Queued {
        explicit QueuedValue(Pass<T> sent)
            : Queued(false)
            , value(sent)
        {}
        T value;
    };

    struct QueuedEnd final : Queued {
        QueuedEnd()
            : Queued(true)
        {}
        std::optional<T> last;
    };

    /// Called with the list locked before a value is delivered or queued. The current value is stored here.
    virtual void willSend(T&) noexcept {}

    TypedSlot<T>& addSlot(Subscription::Builder& builder, Receiver<T>& downstream) const
    {
        return builder.template addSource<TypedSlot<T>>(m_list, builder.subscription(), downstream);
    }

    static void deliver(SubscriberList& list, Pass<T> value) noexcept
    {
        list.forEachSlot([&](Slot& slot) { static_cast<TypedSlot<T>&>(slot).receiver().receive(value); });
    }

    static void deliverEnd(SubscriberList& list) noexcept
    {
        list.forEachSlot([](Slot& slot) { static_cast<TypedSlot<T>&>(slot).receiver().finish(); });
        list.removeAll();
    }

    static void deliverQueued(SubscriberList& list, Queued* queued) noexcept
    {
        const auto owned = Owned<Queued>(queued);
        if (!queued->isEnd)
            return deliver(list, static_cast<QueuedValue*>(queued)->value);
        if (const auto& last = static_cast<QueuedEnd*>(queued)->last)
            deliver(list, *last);
        deliverEnd(list);
    }

    void sendWhileBusy(Pass<T> value) noexcept;
    void finishWith(std::remove_reference_t<Pass<T>>* value) noexcept;

    mutable SubscriberList m_list;
};

template <class T> [[gnu::noinline, gnu::cold]] void SubjectBase<T>::sendWhileBusy(Pass<T> value) noexcept
{
    auto queued = std::make_unique<QueuedValue>(value);
    auto stored = T(value);
    switch (m_list.enterOrLock()) {
    case SubscriberList::Entry::Closed:
        break;
    case SubscriberList::Entry::Delivering:
        willSend(stored);
        m_list.unlock();
        deliver(m_list, value);
        m_list.leave(*this, deliverQueued);
        break;
    case SubscriberList::Entry::Busy:
        willSend(stored);
        m_list.queue(queued.release());
        m_list.unlock();
        break;
    }
}

template <class T>
[[gnu::noinline]] void SubjectBase<T>::finishWith(std::remove_reference_t<Pass<T>>* value) noexcept
{
    const auto keeper = Retained<const Counted>::sharing(this); // the end may drop the last subscription
    auto queued = std::make_unique<QueuedEnd>();
    auto stored = std::optional<T>();
    if (value) {
        queued->last = *value;
        stored = *value;
    }
    const auto entry = m_list.enterOrLock();
    if (entry == SubscriberList::Entry::Closed)
        return;
    if (stored)
        willSend(*stored);
    m_list.close();
    if (entry == SubscriberList::Entry::Busy) {
        m_list.queue(queued.release());
        m_list.unlock();
        return;
    }
    m_list.unlock();
    deliverQueued(m_list, queued.release());
    m_list.leave(*this, deliverQueued);
}

} // namespace orrenby::detail
