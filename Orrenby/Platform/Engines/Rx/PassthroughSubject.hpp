#pragma once

/// @file
/// The passthrough subject of the Rx engine.

#include "Orrenby/Platform/Engines/Ground/SubjectBase.hpp"

namespace orrenby::inline ORRENBY_ABI::StreamsRx {

/// Forwards values to those who are subscribed. Safe to use from several threads.
template <class Output> class PassthroughSubject final : public detail::SubjectBase<Output> {
public:
    static constexpr auto ownEngine = detail::Engine::Rx;

    PassthroughSubject()
        : detail::SubjectBase<Output>(ownEngine)
    {}
};

} // namespace orrenby::StreamsRx
