#pragma once

/// @file
/// What is done with the members of a response. Not in the umbrella header: part of the service decoder.

#include "Orrenby/Platform/Coding/KeyedDecodingContainer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/ServiceDecoder/DecodingInspection.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Of the entry of a decoder's user information that holds the handlers.
inline constexpr std::string_view serviceHandlersKey = "handlers";

using ServiceMembers = KeyedDecodingContainer<ServiceKey>;

/// Who waits for the member under one key.
class ORRENBY_EXPORT ServiceHandler {
public:
    explicit ServiceHandler(ServiceKey key)
        : m_key(std::move(key))
    {}
    ServiceHandler(const ServiceHandler&) = delete;
    ServiceHandler& operator=(const ServiceHandler&) = delete;
    virtual ~ServiceHandler();

    const ServiceKey& key() const noexcept { return m_key; }

    /// Decodes the member, if there is one, and hands it over. What goes wrong is logged.
    void handle(const ServiceMembers& members) const;

    /// Adds all that is wrong with the member; nobody is called.
    virtual void inspect(const DecodingPlace& member, DecodingInspection& inspection) const = 0;

private:
    virtual void load(const ServiceMembers& members) const = 0;

    ServiceKey m_key;
};

template <class T, class F> class ServiceHandlerFor final : public ServiceHandler {
public:
    ServiceHandlerFor(ServiceKey key, F onLoad)
        : ServiceHandler(std::move(key))
        , m_onLoad(std::move(onLoad))
    {}

    void inspect(const DecodingPlace& member, DecodingInspection& inspection) const override
    {
        inspection.inspect<T>(member);
    }

private:
    void load(const ServiceMembers& members) const override
    {
        if (std::optional<T> value = members.decodeIfPresent<T>(key()))
            static_cast<void>(std::invoke(m_onLoad, *std::move(value)));
    }

    mutable F m_onLoad;
};

/// The handlers by key, in the order of their registration. Copies share them.
class ORRENBY_EXPORT ServiceHandlers {
public:
    using Handler = std::shared_ptr<const ServiceHandler>;

    bool contains(const ServiceKey& key) const noexcept;
    void add(Handler handler);

    const Handler* begin() const noexcept;
    const Handler* end() const noexcept;

private:
    std::vector<Handler> m_handlers;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
