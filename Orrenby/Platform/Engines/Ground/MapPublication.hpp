#pragma once

/// @file
/// A stream whose values are those of another one, each passed through a function.

#include "Orrenby/Platform/Engines/Ground/Publication.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// The part of a hop that does not depend on its function.
template <class Input, class Output> class HopNode : public Receiver<Input> {
public:
    void finish() noexcept final { m_downstream.finish(); }

protected:
    explicit HopNode(Receiver<Output>& downstream) noexcept
        : m_downstream(downstream)
    {}

    Receiver<Output>& m_downstream;
};

/// The hop that applies a function. The function stays in the publication, which the subscription keeps
/// alive.
template <class Input, class Output, class Function> class MapNode final : public HopNode<Input, Output> {
public:
    MapNode(const Function& function, Receiver<Output>& downstream) noexcept
        : HopNode<Input, Output>(downstream)
        , m_function(function)
    {}

    void receive(Pass<Input> value) noexcept override { this->m_downstream.receive(m_function(value)); }

private:
    const Function& m_function;
};

/// The part of an operator that does not depend on its function.
template <class Input, class Output> class Operator : public Publication<Output> {
protected:
    Operator(Retained<const Publication<Input>> upstream, std::size_t hopBytes)
        : Publication<Output>(*upstream, hopBytes)
        , m_upstream(std::move(upstream))
    {}

    [[gnu::noinline]] ~Operator() override = default; // one for all functions: it is what costs compile time

    const Retained<const Publication<Input>> m_upstream;
};

/// Applies one function to every value, on the thread that delivers it. All subscriptions share the function.
template <class Input, class Output, class Function>
class MapPublication final : public Operator<Input, Output> {
    using Node = MapNode<Input, Output, Function>;

public:
    MapPublication(Retained<const Publication<Input>> upstream, Function function)
        : Operator<Input, Output>(std::move(upstream), Subscription::bytesFor<Node>())
        , m_function(std::move(function))
    {}

    void connect(Subscription::Builder& builder, Receiver<Output>& downstream) const override
    {
        this->m_upstream->connect(builder, builder.add<Node>(m_function, downstream));
    }

private:
    const Function m_function;
};

} // namespace orrenby::detail
