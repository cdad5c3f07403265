#pragma once

/// @file
/// A stream whose every subscriber gets a subject of its own, and somebody who feeds it.

#include "Orrenby/Platform/Engines/Ground/EndNode.hpp"
#include "Orrenby/Platform/Engines/Ground/KeeperNode.hpp"
#include "Orrenby/Platform/Engines/Ground/SubjectBase.hpp"
#include <concepts>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What is done when a created stream ends, and how to wait for those who still feed it: see `EndAction`.
struct Ending {
    UniqueFunction<void()> action;
    UniqueFunction<void()> wait;
};

/// For each subscription: makes a subject, subscribes to it, and calls `start` with it. What `start` returns
/// is called when the stream ends or is cancelled.
///
/// `start` takes a `Retained<SubjectBase<T>>` and gives a `UniqueFunction<void()>`, which may be empty, or an
/// `Ending`.
template <class T, class Start> class CreatePublication final : public Publication<T> {
public:
    CreatePublication(Engine engine, Start start)
        : Publication<T>(engine,
            Subscription::bytesFor<KeeperNode>() + Subscription::bytesFor<EndAction>()
                + Subscription::bytesFor<EndNode<T>>() + Subscription::bytesFor<TypedSlot<T>>())
        , m_start(std::move(start))
    {}

    void connect(Subscription::Builder& builder, Receiver<T>& downstream) const override
    {
        auto subject = Retained<SubjectBase<T>>::adopting(new SubjectBase<T>(this->engine()));
        builder.template add<KeeperNode>(subject);
        auto& end = builder.template addSource<EndAction>(builder.subscription());
        subject->connect(builder, builder.template add<EndNode<T>>(end, downstream));
        if (auto ending = start(std::move(subject)); ending.action)
            end.set(std::move(ending.action), std::move(ending.wait));
    }

private:
    Ending start(Retained<SubjectBase<T>> subject) const noexcept
    {
        if constexpr (std::same_as<std::invoke_result_t<const Start&, Retained<SubjectBase<T>>>, Ending>)
            return m_start(std::move(subject));
        else
            return {m_start(std::move(subject)), nullptr};
    }

    const Start m_start;
};

} // namespace orrenby::detail
