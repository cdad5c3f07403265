#pragma once

/// @file
/// The current-value subject of the Combine engine.

#include "Orrenby/Platform/Engines/Ground/CurrentValueBase.hpp"

namespace orrenby::inline ORRENBY_ABI::StreamsCombine {

/// Holds a value and hands it to each new subscriber first. Reading it never fails, not even after the end.
///
/// Safe to use from several threads.
template <class Output> class CurrentValueSubject final : public detail::CurrentValueBase<Output> {
public:
    static constexpr auto ownEngine = detail::Engine::Combine;

    /// With the value that the first subscriber gets, unless another one is sent before.
    explicit CurrentValueSubject(Output value)
        : detail::CurrentValueBase<Output>(ownEngine, std::move(value))
    {}
};

} // namespace orrenby::StreamsCombine
