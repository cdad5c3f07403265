#pragma once

/// @file
/// Responses with a member for each service, and who waits for which.

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/ServiceDecoder/LoadedValue.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecodable.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoderError.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceHandlers.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceKey.hpp"
#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// Decodes responses that are one JSON object with a member for each service.
///
/// Features register what their member is decoded to, and a callable that takes it. Each call of `decode`
/// then hands every member that is there to its callable, in the order of the registrations. Members that
/// nobody registered are ignored; a member that is missing or null calls nobody.
///
/// A member that does not decode is reported by one critical log entry, with the error and the property
/// "Service Decoder Key", and the others still arrive. What a callable throws is reported the same way. What
/// all is wrong with a response, and where, tells `decodeReport` in DecodeReport.hpp.
///
/// It fetches nothing, and it keeps nothing of a response. Registrations only add up.
///
/// @snippet Tests/Utilities/ServiceDecoder/ServiceDecoderTests.cpp Registering services
///
/// Register on the main thread, while no other thread decodes; a registration from another thread is
/// reported and made all the same. Decoding is safe to use from several threads at once: callables run on
/// those threads. A callable may register more, which counts from the next response on.
class ORRENBY_EXPORT ServiceDecoder {
public:
    /// What registering can fail with.
    using Error = ServiceDecoderError;

    ServiceDecoder();
    ServiceDecoder(const ServiceDecoder&) = delete;
    ServiceDecoder& operator=(const ServiceDecoder&) = delete;
    ~ServiceDecoder();

    /// With default settings at first, which may be changed. Once something is registered, its `userInfo`
    /// holds the registrations under "handlers": if that entry is taken away or replaced, `decode` ends the
    /// process.
    const JSONDecoder& jsonDecoder() const noexcept { return m_jsonDecoder; }
    JSONDecoder& jsonDecoder() noexcept { return m_jsonDecoder; }

    /// The keys for which something was registered, in no particular order.
    std::unordered_set<ServiceKey> registeredKeys() const;

    /// Calls `onLoad` with the member under `key` of each response. It is kept as long as the decoder.
    ///
    /// `T` is what the member is decoded to. It need not be named where `onLoad` takes one parameter of a
    /// plain type: `register_("user", [](const User& user) { … })`.
    ///
    /// Throws `Error` when the key has been registered before; the first registration stays.
    template <class T, detail::CallableWithLoaded<T> F> void register_(ServiceKey key, F onLoad)
    {
        add(std::make_shared<const detail::ServiceHandlerFor<T, F>>(std::move(key), std::move(onLoad)));
    }
    template <detail::CallableWithOne F> void register_(ServiceKey key, F onLoad)
    {
        register_<detail::LoadedBy<F>, F>(std::move(key), std::move(onLoad));
    }

    /// The same with the key that the type itself names.
    template <ServiceDecodable T, detail::CallableWithLoaded<T> F> void register_(F onLoad)
    {
        register_<T, F>(T::serviceKey(), std::move(onLoad));
    }
    template <detail::CallableWithOne F>
        requires ServiceDecodable<detail::LoadedBy<F>>
    void register_(F onLoad) { register_<detail::LoadedBy<F>, F>(std::move(onLoad)); }

    /// The outcomes of `register_`, which throw nothing.
    template <class T, detail::CallableWithLoaded<T> F>
    Result<Void, Error> tryRegister(ServiceKey key, F onLoad)
    {
        return tryAdd(
            std::make_shared<const detail::ServiceHandlerFor<T, F>>(std::move(key), std::move(onLoad)));
    }
    template <detail::CallableWithOne F> Result<Void, Error> tryRegister(ServiceKey key, F onLoad)
    {
        return tryRegister<detail::LoadedBy<F>, F>(std::move(key), std::move(onLoad));
    }
    template <ServiceDecodable T, detail::CallableWithLoaded<T> F> Result<Void, Error> tryRegister(F onLoad)
    {
        return tryRegister<T, F>(T::serviceKey(), std::move(onLoad));
    }
    template <detail::CallableWithOne F>
        requires ServiceDecodable<detail::LoadedBy<F>> Result<Void, Error> tryRegister(F onLoad)
        {
            return tryRegister<detail::LoadedBy<F>, F>(std::move(onLoad));
        }

    /// Decodes one response and calls whoever has a member in it.
    ///
    /// Throws the decoder's `DecodingError` for bytes that are no JSON and for a top level that is no object;
    /// then nobody is called. At least one registration has to be made before: without any, a response in
    /// JSON ends the process.
    void decode(std::span<const std::byte> data) const;
    void decode(std::string_view utf8) const;

    /// The outcome of `decode`; throws nothing.
    Result<Void, AnyError> tryDecode(std::span<const std::byte> data) const;
    Result<Void, AnyError> tryDecode(std::string_view utf8) const;

private:
    void add(detail::ServiceHandlers::Handler handler);
    Result<Void, Error> tryAdd(detail::ServiceHandlers::Handler handler);

    JSONDecoder m_jsonDecoder;
    detail::ServiceHandlers m_handlers;
};

} // namespace orrenby
