#pragma once

/// @file
/// A stream whose every subscriber gets a subject of its own, and somebody who feeds it.

#include "Orrenby/Platform/Engines/Ground/EndNode.hpp"
#include "Orrenby/Platform/Engines/Ground/KeeperNode.hpp"
#include "Orrenby/Platform/Engines/Ground/SubjectBase.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// For each subscription: makes a subject, subscribes to it, and calls `start` with it. What `start` returns
/// is called when the stream ends or is cancelled.
///
/// `start` takes a `Retained<SubjectBase<T>>` and gives a `UniqueFunction<void()>`, which may be empty.
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
        if (auto cleanUp = start(std::move(subject)))
            end.set(std::move(cleanUp));
    }

private:
    UniqueFunction<void()> start(Retained<SubjectBase<T>> subject) const noexcept
    {
        return m_start(std::move(subject));
    }

    const Start m_start;
};

} // namespace orrenby::detail
