#pragma once

/// @file
/// A stream of one value.

#include "Orrenby/Platform/Engines/Ground/Publication.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Delivers its value to each subscriber and ends, both before the subscribing call returns.
template <class T> class JustPublication final : public Publication<T> {
public:
    JustPublication(Engine engine, T value)
        : Publication<T>(engine, 0)
        , m_value(std::move(value))
    {}

    void connect(Subscription::Builder&, Receiver<T>& downstream) const override
    {
        downstream.receive(m_value);
        downstream.finish();
    }

private:
    const T m_value;
};

} // namespace orrenby::detail
