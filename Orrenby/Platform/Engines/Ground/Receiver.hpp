#pragma once

/// @file
/// The nodes of a running subscription: what a value passes on its way from a source to the callback.

#include "Orrenby/Platform/Export.hpp"
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI::detail {

class Subscription;

/// Anything that lives inside a subscription's block. Nodes are destroyed in the reverse order of their
/// making.
class ORRENBY_EXPORT Node {
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node();

protected:
    Node() = default;

private:
    Node* m_previous = nullptr;
    friend class Subscription;
};

/// How a value travels between nodes: small plain ones in registers, all others by reference.
template <class T>
using Pass = std::conditional_t<std::is_trivially_copyable_v<T> && sizeof(T) <= 2 * sizeof(void*), const T,
    const T&>;

/// A hop: receives the values of one type.
///
/// A source calls one receiver from one thread at a time. Callbacks run inside a `noexcept` boundary: a throw
/// ends the process.
template <class T> class Receiver : public Node {
public:
    virtual void receive(Pass<T> value) noexcept = 0;

    /// The source has ended and will send nothing more.
    virtual void finish() noexcept = 0;
};

} // namespace orrenby::detail
