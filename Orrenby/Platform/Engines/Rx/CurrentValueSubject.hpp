#pragma once

/// @file
/// The current-value subject of the Rx engine.

#include "Orrenby/Platform/Engines/Ground/CurrentValueBase.hpp"
#include "Orrenby/Platform/Engines/Rx/DisposedError.hpp"

namespace orrenby::inline ORRENBY_ABI::StreamsRx {

/// Holds a value and hands it to each new subscriber first. Unlike its counterpart it can be disposed, and
/// then not be read.
///
/// Safe to use from several threads.
template <class Output> class CurrentValueSubject final : public detail::CurrentValueBase<Output> {
public:
    static constexpr auto ownEngine = detail::Engine::Rx;

    /// With the value that the first subscriber gets, unless another one is sent before.
    explicit CurrentValueSubject(Output value)
        : detail::CurrentValueBase<Output>(ownEngine, std::move(value))
    {}

    /// Ends the stream and gives its value up.
    void dispose() noexcept
    {
        m_isDisposed.store(true, std::memory_order_release);
        this->finish();
    }

    /// The current value, also after the end.
    /// @throws DisposedError after `dispose()`.
    Output value() const
    {
        if (m_isDisposed.load(std::memory_order_acquire))
            throw DisposedError();
        return detail::CurrentValueBase<Output>::value();
    }

private:
    std::atomic<bool> m_isDisposed = false;
};

} // namespace orrenby::StreamsRx
