#pragma once

/// @file
/// The passthrough subject of the Combine engine.

#include "Orrenby/Platform/Engines/Ground/SubjectBase.hpp"

namespace orrenby::inline ORRENBY_ABI::StreamsCombine {

/// Forwards values to those who are subscribed. Safe to use from several threads.
template <class Output> class PassthroughSubject final : public detail::SubjectBase<Output> {
public:
    static constexpr auto ownEngine = detail::Engine::Combine;

    PassthroughSubject()
        : detail::SubjectBase<Output>(ownEngine)
    {}
};

} // namespace orrenby::StreamsCombine
