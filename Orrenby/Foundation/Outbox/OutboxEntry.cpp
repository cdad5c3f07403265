#include "Orrenby/Foundation/Outbox/OutboxEntry.hpp"

#include "Orrenby/Foundation/Outbox/OutboxPieces.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

[[noreturn]] void refuse(const OutboxEntry& entry, const std::string& key)
{
    const auto objectID = entry.objectID();
    throw StoreError(StoreError::Kind::Corrupt,
        {.message = objectID.description() + "." + key + " is nothing of a request",
            .objectIDs = {objectID},
            .key = key});
}

template <class T> std::optional<T> optionalValue(const OutboxEntry& entry, std::string_view key)
{
    const Any value = entry.value(key);
    const auto* const found = value.get<T>();
    return found != nullptr ? std::optional<T>(*found) : std::nullopt;
}

template <class T> T requiredValue(const OutboxEntry& entry, std::string_view key)
{
    return optionalValue<T>(entry, key).value_or(T());
}

} // namespace

OutboxEntry::~OutboxEntry() = default;

OutboxState OutboxEntry::state() const
{
    switch (requiredValue<std::int64_t>(*this, "state")) {
    case static_cast<std::int64_t>(OutboxState::Pending):
        return OutboxState::Pending;
    case static_cast<std::int64_t>(OutboxState::Sending):
        return OutboxState::Sending;
    default:
        return OutboxState::GivenUp; // whatever it is, nobody sends it
    }
}

std::int64_t OutboxEntry::attempts() const { return requiredValue<std::int64_t>(*this, "attempts"); }

std::optional<std::string> OutboxEntry::key() const { return optionalValue<std::string>(*this, "key"); }

Date OutboxEntry::addedAt() const { return requiredValue<Date>(*this, "addedAt"); }

std::optional<Date> OutboxEntry::notBefore() const { return optionalValue<Date>(*this, "notBefore"); }

std::optional<Date> OutboxEntry::begunAt() const { return optionalValue<Date>(*this, "begunAt"); }

std::optional<std::string> OutboxEntry::reason() const { return optionalValue<std::string>(*this, "reason"); }

std::string OutboxEntry::method() const { return requiredValue<std::string>(*this, "method"); }

URL OutboxEntry::url() const
{
    auto url = URL::make(requiredValue<std::string>(*this, "url"));
    if (!url)
        refuse(*this, "url");
    return *std::move(url);
}

std::int64_t OutboxEntry::bodyLength() const { return requiredValue<std::int64_t>(*this, "bodyLength"); }

bool OutboxEntry::hasStreamedBody() const { return requiredValue<bool>(*this, "hasStreamedBody"); }

std::optional<Data> OutboxEntry::content() const
{
    const auto body = object("body");
    if (body == nullptr)
        return std::nullopt;
    const Any content = body->value("content");
    const auto* const bytes = content.get<Data>();
    return bytes != nullptr ? *bytes : Data();
}

URLRequest OutboxEntry::request() const
{
    auto headers = detail::headersFromData(requiredValue<Data>(*this, "headers"));
    if (!headers)
        refuse(*this, "headers");
    URLRequest request(url(), requiredValue<double>(*this, "timeoutInterval"));
    request.setHTTPMethod(method());
    request.setHTTPHeaders(*std::move(headers));
    if (!hasStreamedBody())
        request.setHTTPBody(content());
    return request;
}

BodyStream OutboxEntry::body() const
{
    auto bytes = content();
    BodyStream body;
    if (!bytes)
        return body;
    if (!hasStreamedBody()) {
        body.append(*std::move(bytes));
        return body;
    }
    auto streamed = detail::bodyFromData(*bytes);
    if (!streamed)
        refuse(*this, "body");
    return *std::move(streamed);
}

} // namespace orrenby
