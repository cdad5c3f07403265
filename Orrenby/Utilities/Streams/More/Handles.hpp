#pragma once

/// @file
/// The subscriptions on which one other depends.

#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include <memory>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Collects handles, which are cancelled together. One that comes later is cancelled as it comes.
///
/// A handle: copies share the collection. Safe to use from several threads; no lock is held while anything is
/// cancelled.
class ORRENBY_EXPORT Handles {
public:
    Handles();

    void add(Streams::AnyCancellable handle) const;

    /// Puts `handle` in the place of all others, which are cancelled.
    void replace(Streams::AnyCancellable handle) const;

    void cancel() const noexcept;
    void cancelAndWait() const noexcept;

    bool isCancelled() const noexcept;

private:
    using List = std::vector<Streams::AnyCancellable>;
    struct Content {
        PlainMutex mutex;
        List handles;
        bool isCancelled = false;
    };

    List cancelled() const noexcept;

    std::shared_ptr<Content> m_content;
};

} // namespace orrenby::detail
