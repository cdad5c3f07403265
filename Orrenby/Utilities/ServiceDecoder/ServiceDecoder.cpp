#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoder.hpp"

#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Scheduling/Thread.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Orrenby/Utilities/ServiceDecoder/KeyedServiceResponse.hpp"
#include <exception>

namespace orrenby::inline ORRENBY_ABI {

ServiceDecoder::ServiceDecoder() = default;

ServiceDecoder::~ServiceDecoder() = default;

std::unordered_set<ServiceKey> ServiceDecoder::registeredKeys() const
{
    std::unordered_set<ServiceKey> keys;
    for (const auto& handler : m_handlers)
        keys.insert(handler->key());
    return keys;
}

void ServiceDecoder::add(detail::ServiceHandlers::Handler handler) { tryAdd(std::move(handler)).unwrap(); }

Result<Void, ServiceDecoder::Error> ServiceDecoder::tryAdd(detail::ServiceHandlers::Handler handler)
{
    Log::assert_(Thread::isMainThread(), "register should be called on main thread",
        CallSite("Utilities/ServiceDecoder", 56, "register(_:onLoad:)"));
    if (m_handlers.contains(handler->key()))
        return Result<Void, Error>::failure(Error::duplicateKey(handler->key()));

    m_handlers.add(std::move(handler));
    m_jsonDecoder.userInfo().set(detail::serviceHandlersKey, m_handlers);
    return Result<Void, Error>::success();
}

void ServiceDecoder::decode(std::span<const std::byte> data) const
{
    static_cast<void>(m_jsonDecoder.decode<KeyedServiceResponse>(data));
}

void ServiceDecoder::decode(std::string_view utf8) const { decode(detail::bytesOf(utf8)); }

Result<Void, AnyError> ServiceDecoder::tryDecode(std::string_view utf8) const
{
    return tryDecode(detail::bytesOf(utf8));
}

Result<Void, AnyError> ServiceDecoder::tryDecode(std::span<const std::byte> data) const
{
    try {
        decode(data);
        return Result<Void, AnyError>::success();
    } catch (...) {
        return Result<Void, AnyError>::failure(AnyError(std::current_exception()));
    }
}

} // namespace orrenby
