#pragma once

/// @file
/// The future of the Combine engine: one attempt, made at once, for everybody.

#include "Orrenby/Platform/Engines/Ground/CleanUps.hpp"
#include "Orrenby/Platform/Engines/Ground/EndNode.hpp"
#include "Orrenby/Platform/Engines/Ground/SubjectBase.hpp"
#include <memory>
#include <optional>

namespace orrenby::inline ORRENBY_ABI::StreamsCombine {

/// The result of an attempt: subscribers get it when it comes, or at once when it is there. The first one
/// given holds.
///
/// Safe to use from several threads.
template <class T> class FutureResult final : public detail::SubjectBase<T> {
public:
    FutureResult()
        : detail::SubjectBase<T>(detail::Engine::Combine)
    {}

    void connect(detail::Subscription::Builder& builder, detail::Receiver<T>& downstream) const override
    {
        auto& slot = this->addSlot(builder, downstream);
        this->m_list.lock();
        const auto joining = this->m_list.join(slot, false);
        this->m_list.unlock();
        if (joining == detail::SubscriberList::Joining::Closed) {
            downstream.receive(*m_result); // never changes again
            downstream.finish();
        }
    }

private:
    void willSend(T& result) noexcept override { m_result.emplace(std::move(result)); }

    std::optional<T> m_result;
};

/// Makes its attempt when it is made. The end or cancellation of any subscription runs the clean-ups.
///
/// `Attempt` takes a `Retained<SubjectBase<T>>`, to be finished with the result, and gives a clean-up.
template <class T> class Future final : public detail::Publication<T> {
    using Subscription = detail::Subscription;

public:
    /// Calls `attempt` at once, on the calling thread.
    template <class Attempt>
    explicit Future(Attempt attempt)
        : detail::Publication<T>(detail::Engine::Combine,
            Subscription::bytesFor<detail::EndAction>() + Subscription::bytesFor<detail::EndNode<T>>()
                + Subscription::bytesFor<detail::TypedSlot<T>>())
    {
        [&]() noexcept {
            detail::CleanUps::add(m_cleanUps, attempt(detail::Retained<detail::SubjectBase<T>>(m_result)));
        }();
    }

    void connect(Subscription::Builder& builder, detail::Receiver<T>& downstream) const override
    {
        auto& end = builder.template addSource<detail::EndAction>(builder.subscription());
        end.set([cleanUps = m_cleanUps] { cleanUps->run(); });
        m_result->connect(builder, builder.template add<detail::EndNode<T>>(end, downstream));
    }

private:
    const std::shared_ptr<detail::CleanUps> m_cleanUps = std::make_shared<detail::CleanUps>();
    const detail::Retained<FutureResult<T>> m_result = detail::Retained<FutureResult<T>>::adopting(
        new FutureResult<T>());
};

} // namespace orrenby::StreamsCombine
