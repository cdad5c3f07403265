#pragma once

/// @file
/// Where a subscription hangs on its subject, and the hop that takes its values.

#include "Orrenby/Platform/Engines/Ground/SubscriberList.hpp"

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

    Receiver<T>& receiver() const noexcept { return *m_receiver.load(std::memory_order_acquire); }

private:
    // The first thread that needs the shared node makes it: who reads the pointer must see it whole.
    void deafen() noexcept override { m_receiver.store(&DeafNode<T>::shared(), std::memory_order_release); }

    std::atomic<Receiver<T>*> m_receiver;
};

} // namespace orrenby::detail
