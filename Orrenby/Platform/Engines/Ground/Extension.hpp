#pragma once

/// @file
/// Room for a part of a chain that is known only when somebody subscribes.

#include "Orrenby/Platform/Engines/Ground/Publication.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Holds a second block of nodes for a subscription, and the description that they refer to.
///
/// The nodes belong to the subscription like those of its own block: they are cancelled, waited for and
/// destroyed with it.
class ORRENBY_EXPORT Extension final : public Node {
public:
    explicit Extension(Retained<const Counted> description) noexcept
        : m_description(std::move(description))
    {}
    ~Extension() override { ::operator delete(m_block); } // its nodes were made later, so they are gone

    /// Connects `publication`, which the extension keeps alive, to `downstream`, in a block of its own.
    template <class T>
    static void connect(
        Subscription::Builder& builder, Retained<const Publication<T>> publication, Receiver<T>& downstream)
    {
        const auto& connected = *publication;
        auto& extension = builder.add<Extension>(std::move(publication));
        extension.m_block = ::operator new(connected.bytes());
        auto inner = builder.continuedIn(extension.m_block);
        connected.connect(inner, downstream);
    }

private:
    const Retained<const Counted> m_description;
    void* m_block = nullptr;
};

} // namespace orrenby::detail
