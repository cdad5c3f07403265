#pragma once

/// @file
/// A stream that is made anew for each subscriber.

#include "Orrenby/Platform/Engines/Ground/EngineCheck.hpp"
#include "Orrenby/Platform/Engines/Ground/Extension.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

/// Calls its factory once for each subscription and connects that to the publication it gives.
template <class T, class Factory> class DeferredPublication final : public Publication<T> {
public:
    DeferredPublication(Engine engine, Factory factory)
        : Publication<T>(engine, Subscription::bytesFor<Extension>(), Publication<T>::WithHops)
        , m_factory(std::move(factory))
    {}

    void connect(Subscription::Builder& builder, Receiver<T>& downstream) const override
    {
        auto publication = make();
        checkEngine(publication->engine(), this->engine());
        Extension::connect(builder, std::move(publication), downstream);
    }

private:
    Retained<const Publication<T>> make() const noexcept { return m_factory(); }

    const Factory m_factory;
};

} // namespace orrenby::detail
