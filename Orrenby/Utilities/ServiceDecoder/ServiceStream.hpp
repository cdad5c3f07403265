#pragma once

/// @file
/// A service's members as a stream.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/More/Filter.hpp"
#include <concepts>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// The last value that came, nothing at first.
template <class T> using LatestService = Streams::CurrentValueSubject<std::optional<T>, Never>;

template <class T> auto feeding(const LatestService<T>& latest)
{
    return [latest](T value) { latest.send(std::optional<T>(std::move(value))); };
}

template <class T> Streams::AnyPublisher<T, Never> serviceStreamOf(const LatestService<T>& latest)
{
    const auto came = Streams::filter(
        latest.asPublisher(), [](const std::optional<T>& value) { return value.has_value(); });
    return came.map([](const std::optional<T>& value) { return *value; });
}

} // namespace detail

/// Registers `key` with `services` and gives the stream of what comes under it, decoded as a `T`.
///
/// Each subscriber first gets the last value that came, before the subscribing call returns, and then every
/// later one; if none has come yet, it waits for the first. The last value is kept as long as `services` or
/// the stream. Members that do not decode are logged as for every registration and are no element of the
/// stream, which never fails and never ends.
///
/// @snippet Tests/Utilities/ServiceDecoder/ServiceStreamTests.cpp Subscribing to a service
///
/// Values are delivered on the thread that decodes; `receive(DispatchQueue::main())` brings them elsewhere.
/// Throws `ServiceDecoder::Error` when the key has been registered before. As every stream, the first one
/// fixes the engine. Call it on the main thread; the stream is safe to use from several threads.
template <std::copyable T>
Streams::AnyPublisher<T, Never> serviceStream(ServiceDecoder& services, ServiceKey key)
{
    const detail::LatestService<T> latest(std::nullopt);
    services.register_<T>(std::move(key), detail::feeding(latest));
    return detail::serviceStreamOf(latest);
}

/// The same under the key that the type itself names.
template <std::copyable T>
    requires ServiceDecodable<T> Streams::AnyPublisher<T, Never> serviceStream(ServiceDecoder& services)
    {
        return serviceStream<T>(services, T::serviceKey());
    }

/// The outcomes of `serviceStream`, which throw nothing.
template <std::copyable T>
Result<Streams::AnyPublisher<T, Never>, ServiceDecoder::Error> tryServiceStream(
    ServiceDecoder& services, ServiceKey key)
{
    using Outcome = Result<Streams::AnyPublisher<T, Never>, ServiceDecoder::Error>;
    const detail::LatestService<T> latest(std::nullopt);
    const auto registered = services.tryRegister<T>(std::move(key), detail::feeding(latest));
    if (const auto error = registered.error())
        return Outcome::failure(*error);
    return Outcome::success(detail::serviceStreamOf(latest));
}
template <std::copyable T>
    requires ServiceDecodable<T> Result<Streams::AnyPublisher<T, Never>, ServiceDecoder::Error>
    tryServiceStream(ServiceDecoder& services)
    {
        return tryServiceStream<T>(services, T::serviceKey());
    }

} // namespace orrenby
