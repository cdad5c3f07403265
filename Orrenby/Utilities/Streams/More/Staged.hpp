#pragma once

/// @file
/// Operators that keep something from one element to the next, or leave elements out.

#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// The value of an element, or nothing. Where no failure can exist, none is looked for: hops are many and
/// short.
template <typename Output, typename Failure>
const Output* valueIn(const Streams::Payload<Output, Failure>& payload) noexcept
{
    if (std::same_as<Failure, Never> && payload.isError())
        __builtin_unreachable();
    return payload.asValue();
}

/// The hop of a stage, which lives in the subscription's block.
template <typename Input, typename Output, typename Stage>
class StageNode final : public HopNode<Input, Output> {
public:
    StageNode(Stage stage, Receiver<Output>& downstream)
        : HopNode<Input, Output>(downstream)
        , m_stage(std::move(stage))
    {}

    void receive(Pass<Input> value) noexcept override
    {
        m_stage(value, [this](const Output& next) { this->m_downstream.receive(next); });
    }

private:
    Stage m_stage;
};

template <typename Input, typename Output, typename MakeStage>
class StagedPublication final : public Operator<Input, Output> {
    using Node = StageNode<Input, Output, std::invoke_result_t<const MakeStage&>>;

public:
    StagedPublication(Retained<const Publication<Input>> upstream, MakeStage makeStage)
        : Operator<Input, Output>(std::move(upstream), Subscription::bytesFor<Node>())
        , m_makeStage(std::move(makeStage))
    {}

    void connect(Subscription::Builder& builder, Receiver<Output>& downstream) const override
    {
        this->m_upstream->connect(builder, builder.template add<Node>(m_makeStage(), downstream));
    }

private:
    const MakeStage m_makeStage;
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// A stream whose elements a stage makes of those of `publisher`. `makeStage` is called for each subscriber
/// and gives its stage: a callable that takes a payload and `next`, and calls `next` with as many payloads as
/// it likes, or none.
///
/// @snippet Tests/Contracts/Streams/More/StagedTests.cpp Writing an operator
///
/// A stage belongs to one subscription, which calls it on the thread that delivers, one call at a time; it
/// may keep what it needs in itself. It must not throw. It costs no allocation of its own.
template <typename OutputType, typename FailureType, typename Output, typename Failure, typename MakeStage>
AnyPublisher<OutputType, FailureType> staged(
    const AnyPublisher<Output, Failure>& publisher, MakeStage makeStage)
{
    using Publication
        = detail::StagedPublication<Payload<Output, Failure>, Payload<OutputType, FailureType>, MakeStage>;
    const auto& upstream = detail::publicationOf(publisher);
    detail::useEngine(upstream->engine());
    return AnyPublisher<OutputType, FailureType>(
        detail::Retained<const Publication>::adopting(new Publication(upstream, std::move(makeStage))));
}

} // namespace orrenby::Streams
