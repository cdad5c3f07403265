#pragma once

/// @file
/// Sources that are pushed from outside: what the subjects of both engines are made of.

#include "Orrenby/Platform/Engines/Ground/Publication.hpp"
#include "Orrenby/Platform/Engines/Ground/SubscriberList.hpp"
#include <memory>
#include <optional>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Takes values and does nothing: what a cancelled slot delivers to until it is buried.
template <class T> class DeafNode final : public Receiver<T> {
public:
    void receive(Pass<T>) noexcept override {}
    void finish() noexcept override {}

    static DeafNode& shared() noexcept
    {
        static auto& node = *new DeafNode; // never destroyed: subjects may outlive the end of main
        return node;
    }
};

/// The slot of a subscription to a subject, with the hop that takes its values.
///
/// A cancelled slot changes its receiver instead of carrying a flag: that spares the deliverer a test for
/// each subscriber.
template <class T> class TypedSlot final : public Slot {
public:
    TypedSlot(SubscriberList& list, Subscription& subscription, Receiver<T>& receiver) noexcept
        : Slot(list, subscription)
        , m_receiver(&receiver)
    {}

    Receiver<T>& receiver() const noexcept { return *m_receiver.load(std::memory_order_relaxed); }

private:
    void deafen() noexcept override { m_receiver.store(&DeafNode<T>::shared(), std::memory_order_relaxed); }

    std::atomic<Receiver<T>*> m_receiver;
};

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
        const auto owned = std::unique_ptr<Queued>(queued);
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

/// A subject that keeps the value sent last and hands it to each new subscriber first, before the subscribing
/// call returns.
///
/// The current value changes before anybody is told, also when the send is queued. After the end it stays
/// readable.
template <class T> class CurrentValueBase : public SubjectBase<T> {
public:
    CurrentValueBase(Engine engine, T value)
        : SubjectBase<T>(engine)
        , m_value(std::move(value))
    {}

    void send(Pass<T> value) noexcept
    {
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (m_list.tryEnterLocked()) [[likely]] {
                m_value = value;
                deliverEntered(value);
                return;
            }
        } else {
            auto stored = T(
                value); // copied, and the old value destroyed, outside of the lock: both may run foreign code
            if (m_list.tryEnterLocked()) [[likely]] {
                willSend(stored);
                deliverEntered(value);
                return;
            }
        }
        this->sendWhileBusy(value);
    }

    /// A copy of the current value.
    T value() const
    {
        m_list.lock();
        const auto unlocking = Unlocking{m_list};
        return m_value;
    }

    void connect(Subscription::Builder& builder, Receiver<T>& downstream) const override;

private:
    using SubjectBase<T>::m_list;

    struct Unlocking {
        SubscriberList& list;
        ~Unlocking() { list.unlock(); }
    };

    void willSend(T& value) noexcept override
    {
        using std::swap;
        swap(m_value, value);
    }

    void deliverEntered(Pass<T> value) noexcept
    {
        m_list.unlock();
        this->deliver(m_list, value);
        m_list.leave(*this, this->deliverQueued);
    }

    T m_value;
};

template <class T>
void CurrentValueBase<T>::connect(Subscription::Builder& builder, Receiver<T>& downstream) const
{
    using Joining = SubscriberList::Joining;
    auto& slot = this->addSlot(builder, downstream);

    m_list.lock();
    const auto joining = m_list.join(slot, true);
    if (joining == Joining::Closed) {
        m_list.unlock();
        downstream.finish();
        return;
    }
    const auto first = [&]() noexcept {
        const auto unlocking = Unlocking{m_list};
        return T(m_value);
    }();
    downstream.receive(first);
    if (joining == Joining::Delivering)
        m_list.leave(*this, this->deliverQueued);
    else
        m_list.finishReplay(*this, this->deliverQueued);
}

} // namespace orrenby::detail
