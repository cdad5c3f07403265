#pragma once

/// @file
/// A subject with a memory of one value.

#include "Orrenby/Platform/Engines/Ground/SubjectBase.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

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
