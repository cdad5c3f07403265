#pragma once

/// @file
/// A stream made of the latest values of several others.

#include "Orrenby/Platform/Engines/Ground/Gate.hpp"
#include "Orrenby/Platform/Engines/Ground/Publication.hpp"
#include <array>
#include <memory>
#include <optional>
#include <tuple>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Keeps the latest value of each source, and passes on what `function` makes of all of them.
///
/// Only the thread that delivers touches the values: another one queues its own. So copying them needs no
/// lock, and every subscriber sees one order.
template <class Result, class Function, class... T> class LatestNode final : public Node {
    static constexpr auto count = sizeof...(T);

public:
    LatestNode(const Function& function, Receiver<Result>& downstream) noexcept
        : m_function(function)
        , m_downstream(downstream)
    {}

    template <std::size_t index> using Value = std::tuple_element_t<index, std::tuple<T...>>;

    template <std::size_t index> void receive(Pass<Value<index>> value) noexcept
    {
        if (m_gate.tryEnter()) [[likely]] {
            update<index>(value);
            m_gate.leave(Taking{*this});
        } else
            enqueue(std::make_unique<Update<index>>(value));
    }

    template <std::size_t index> void finish() noexcept { enqueue(std::make_unique<End<index>>()); }

private:
    /// What one source has sent and nobody has taken yet.
    struct Change : Queued {
        using Queued::Queued;
        virtual void apply(LatestNode& node) noexcept = 0;
    };

    template <std::size_t index> struct Update final : Change {
        explicit Update(Pass<Value<index>> sent)
            : Change(false)
            , value(sent)
        {}
        void apply(LatestNode& node) noexcept override { node.update<index>(value); }
        Value<index> value;
    };

    template <std::size_t index> struct End final : Change {
        End() noexcept
            : Change(true)
        {}
        void apply(LatestNode& node) noexcept override { node.end<index>(); }
    };

    /// Applies what was queued.
    struct Taking {
        LatestNode& node;
        void operator()(Queued* queued) const noexcept
        {
            const auto owned = std::unique_ptr<Change>(static_cast<Change*>(queued));
            owned->apply(node);
        }
    };

    [[gnu::noinline]] void enqueue(std::unique_ptr<Change> change) noexcept
    {
        const auto entry = m_gate.enterOrLock();
        if (entry == Gate::Entry::Busy)
            m_gate.queue(change.release());
        m_gate.unlock();
        if (entry == Gate::Entry::Busy)
            return;
        change->apply(*this);
        m_gate.leave(Taking{*this});
    }

    template <std::size_t index> void update(Pass<Value<index>> value) noexcept
    {
        std::get<index>(m_latest) = value;
        if (m_missing != 0) {
            m_missing &= ~(1U << index);
            if (m_missing != 0)
                return;
        }
        m_downstream.receive(
            std::apply([this](const auto&... latest) { return m_function(*latest...); }, m_latest));
    }

    /// All have ended, or one that never sent anything: no further tuple can come.
    template <std::size_t index> void end() noexcept
    {
        m_running &= ~(1U << index);
        const auto isOver = m_running == 0 || (m_missing & (1U << index)) != 0;
        if (isOver && !std::exchange(m_hasEnded, true))
            m_downstream.finish();
    }

    static constexpr auto all = (1U << count) - 1;

    const Function& m_function;
    Receiver<Result>& m_downstream;
    Gate m_gate;
    unsigned m_missing = all; // a bit for each source that has sent nothing yet
    unsigned m_running = all;
    bool m_hasEnded = false;
    std::tuple<std::optional<T>...> m_latest;
};

/// Where the values of one source come in.
template <std::size_t index, class Latest>
class LatestInlet final : public Receiver<typename Latest::template Value<index>> {
public:
    explicit LatestInlet(Latest& latest) noexcept
        : m_latest(latest)
    {}

    void receive(Pass<typename Latest::template Value<index>> value) noexcept override
    {
        m_latest.template receive<index>(value);
    }
    void finish() noexcept override { m_latest.template finish<index>(); }

private:
    Latest& m_latest;
};

/// Once each of its sources has sent a value, passes on for each further one what `function` makes of the
/// latest values of all.
template <class Result, class Function, class... T>
class CombineLatestPublication final : public Publication<Result> {
    using Latest = LatestNode<Result, Function, T...>;
    using Indices = std::index_sequence_for<T...>;

public:
    CombineLatestPublication(Engine engine, Function function, Retained<const Publication<T>>... sources)
        : Publication<Result>(
            engine, bytesFor(Indices()) + (sources->bytes() + ...), Publication<Result>::WithHops)
        , m_function(std::move(function))
        , m_sources(std::move(sources)...)
    {}

    void connect(Subscription::Builder& builder, Receiver<Result>& downstream) const override
    {
        connectAll(builder, builder.template add<Latest>(m_function, downstream), Indices());
    }

private:
    template <std::size_t... index> static constexpr std::size_t bytesFor(std::index_sequence<index...>)
    {
        return Subscription::bytesFor<Latest>()
            + (Subscription::bytesFor<LatestInlet<index, Latest>>() + ...);
    }

    template <std::size_t... index>
    void connectAll(Subscription::Builder& builder, Latest& latest, std::index_sequence<index...>) const
    {
        (std::get<index>(m_sources)->connect(
             builder, builder.template add<LatestInlet<index, Latest>>(latest)),
            ...);
    }

    const Function m_function;
    const std::tuple<Retained<const Publication<T>>...> m_sources;
};

} // namespace orrenby::detail
