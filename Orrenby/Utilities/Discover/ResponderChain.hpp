#pragma once

/// @file
/// Messages for whoever claims them.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/TestAccess.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Utilities/WeakBox.hpp"
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Ends the process: a chain was given an empty `what`.
[[noreturn]] ORRENBY_EXPORT void emptyResponderPart(std::string_view what) noexcept;

} // namespace detail

/// Delivers a message to the first responder that claims it. The sender knows no responder, and the chain
/// keeps none of them alive.
///
/// A responder is any object held by a `Ref`, entered with a handler. The handler looks at a message and
/// gives an action to claim it, or nothing. The action runs when the asking is over, once per message. A
/// chain can be a responder of another chain. It is made with `std::make_shared`, or stands on its own.
///
/// @snippet Tests/Utilities/Discover/ResponderChainTests.cpp Sending along a chain
///
/// Responders are asked in the order in which they were added; one that got a new handler keeps its place.
/// The chain owns its handlers: one that holds its responder by a `Ref` keeps it alive for ever. Entries of
/// responders that are gone leave at the next `send`, and at no other time.
///
/// A handler must not change the chain that asks it. If it does, this walk still asks those who were there
/// before. An action may change it. A handler may `send`, the received message too: that is an asking of its
/// own, which asks every responder, this one included, so it has to know when to stop. An empty reference in
/// place of a responder, or a null handler, is a programming error. What a handler or an action throws passes
/// through.
///
/// All operations are O(n). Not synchronised. Use from the main thread.
template <class Message> class ResponderChain {
public:
    /// What a claimed message sets off. An empty one, as `nullptr` makes it, claims nothing.
    using Action = UniqueFunction<void(const Message&)>;
    using Handler = UniqueFunction<Action(const Message&)>;

    ResponderChain() = default;
    ResponderChain(const ResponderChain&) = delete;
    ResponderChain& operator=(const ResponderChain&) = delete;

    /// Enters `object` with its handler. A handler that it had before is replaced.
    ///
    /// @returns This chain, for the next call.
    template <class Object>
    ResponderChain& addResponder(
        const Ref<Object>& object, Handler handler, TraceSite site = TraceSite::current())
    {
        if (!object)
            detail::emptyResponderPart("reference in place of a responder");
        if (!handler)
            detail::emptyResponderPart("callable in place of a handler");
        report<Object>(Trace::Kind::Attach, site);
        add({WeakBox<const void>(object), std::make_shared<Handler>(std::move(handler)), {}});
        return *this;
    }

    /// Enters another chain: what one of its responders claims is claimed for this chain, at the place of the
    /// entry. The other chain is not kept alive.
    ///
    /// Adding a chain to itself has no effect. A chain that is met again inside its own walk, because two
    /// contain each other, is passed over. One that stands in two places is walked twice.
    ///
    /// @returns This chain, for the next call.
    ResponderChain& addResponder(const Ref<ResponderChain>& chain, TraceSite site = TraceSite::current())
    {
        if (chain.get() == this)
            return *this;
        if (!chain)
            detail::emptyResponderPart("reference in place of a responder");
        report<ResponderChain>(Trace::Kind::Attach, site);
        add({WeakBox<const void>(chain), nullptr, chain});
        return *this;
    }

    /// Without effect if `object` has no entry.
    template <class Object>
    void removeResponder(const Ref<Object>& object, TraceSite site = TraceSite::current())
    {
        const auto box = WeakBox<const void>(object);
        for (auto entry = m_responders.begin(); entry != m_responders.end(); ++entry)
            if (entry->object == box) {
                // Let go of after the change, since what a handler holds may run code that uses this chain.
                const auto removed = std::move(*entry);
                m_responders.erase(entry);
                report<Object>(Trace::Kind::Detach, site);
                return;
            }
    }

    /// Forgets all responders. What they keep is let go of when none is registered any more.
    void removeAll() { const auto removed = std::exchange(m_responders, {}); }

    /// Asks for an action and runs it.
    ///
    /// @returns Whether some responder claimed the message.
    bool send(const Message& message)
    {
        auto action = lookUp(message);
        if (!action)
            return false;
        action(message);
        return true;
    }

private:
    /// A responder with its handler, or a chain, which has none.
    struct Entry {
        WeakBox<const void> object;
        Ref<Handler> handler;
        WeakRef<ResponderChain> chain;
    };

    /// A chain that is being walked, and the one as whose entry it is: what one `send` has entered. What a
    /// handler sends begins anew.
    struct Walk {
        const ResponderChain* chain;
        const Walk* outer;
    };

    bool isIn(const Walk* walk) const
    {
        return walk != nullptr && (walk->chain == this || isIn(walk->outer));
    }

    template <class Object>
    static void report([[maybe_unused]] Trace::Kind kind, [[maybe_unused]] TraceSite site)
    {
#ifdef ORRENBY_DIAGNOSTICS
        Trace::report(kind, typeName<Object>(), site);
#endif
    }

    void add(Entry added)
    {
        for (auto& entry : m_responders)
            if (entry.object == added.object) {
                std::swap(entry, added); // what the old one held goes when the change is made
                return;
            }
        m_responders.push_back(std::move(added));
    }

    /// Drops the entries of responders that are gone.
    void prune()
    {
        std::size_t aliveCount = 0;
        for (const auto& entry : m_responders)
            aliveCount += entry.object.containsObject();
        if (aliveCount == m_responders.size())
            return;

        std::vector<Entry> alive;
        alive.reserve(aliveCount);
        for (const auto& entry : m_responders)
            if (entry.object.containsObject())
                alive.push_back(entry);
        m_responders.swap(alive); // what goes away does so here, with the chain whole
    }

    /// The action of the first responder that claims `message`, or an empty one.
    Action lookUp(const Message& message, const Walk* outer = nullptr)
    {
        if (isIn(outer))
            return nullptr;
        prune();
        const auto walk = Walk{this, outer};
        const auto snapshot = m_responders;
        for (const auto& entry : snapshot) {
            // Held while it is asked; it may be gone since the walk began.
            const auto object = entry.object.object();
            if (!object)
                continue;
            auto action = entry.handler ? (*entry.handler)(message)
                                        : entry.chain.lock()->lookUp(message, &walk);
            if (action)
                return action;
        }
        return nullptr;
    }

    std::vector<Entry> m_responders;

    friend struct testing::TestAccess;
};

} // namespace orrenby
