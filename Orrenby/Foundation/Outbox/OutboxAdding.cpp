#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include "Orrenby/Foundation/Outbox/OutboxError.hpp"
#include "Orrenby/Foundation/Outbox/OutboxPieces.hpp"
#include "Orrenby/Foundation/Requests/HTTPHeaderField.hpp"
#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Foundation/Requests/MultipartText.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include <cmath>
#include <exception>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// The name that services agree on.
constexpr std::string_view idempotencyKey = "Idempotency-Key";

void check(const URLRequest& request, const OutboxOptions& options)
{
    if (!request.url().scheme())
        throw OutboxError(OutboxError::Kind::NoAddress,
            "\"" + request.url().absoluteString() + "\" leads nowhere by itself");
    if (std::isnan(request.timeoutInterval())
        || (options.notBefore && std::isnan(options.notBefore->secondsSince1970())))
        throw OutboxError(OutboxError::Kind::NoNumber, "a time is no number");
    const int bodies = (request.httpBody() ? 1 : 0) + (options.file ? 1 : 0)
        + (options.parts.empty() ? 0 : 1);
    if (bodies > 1)
        throw OutboxError(OutboxError::Kind::SeveralBodies, "bytes, a file and parts exclude one another");
    for (const auto& part : options.parts)
        if (part.path.has_value() == part.data.has_value())
            throw OutboxError(OutboxError::Kind::SeveralBodies,
                "the part \"" + part.key + "\" is not either file or bytes");
}

std::string_view textOf(const Data& data)
{
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

/// What an entry keeps of a body.
struct KeptBody {
    std::optional<Data> content = {};
    std::uint64_t length = 0;
    bool isStreamed = false;
};

KeptBody writtenParts(const std::vector<OutboxPart>& parts, std::string_view boundary)
{
    detail::OutboxBodyWriter writer;
    for (const auto& part : parts) {
        const auto frame = detail::bodyPartFrame(part.key, boundary, part.contentType);
        writer.append(frame.before);
        if (part.path)
            writer.appendFile(*part.path);
        else
            writer.append(textOf(*part.data));
        writer.append(frame.after);
    }
    writer.append(detail::closingDelimiter(boundary));
    return {.content = writer.content(), .length = writer.length(), .isStreamed = true};
}

KeptBody keptBody(const URLRequest& request, const OutboxOptions& options, HTTPHeaders& headers)
{
    if (options.file) {
        detail::OutboxBodyWriter writer;
        writer.appendFile(options.file->path);
        if (!options.file->mimetype.empty())
            headers.set(HTTPHeaderField::contentType, options.file->mimetype);
        return {.content = writer.content(), .length = writer.length(), .isStreamed = true};
    }
    if (!options.parts.empty()) {
        // Written down once, so that every attempt sends the same bytes.
        const auto boundary = detail::newBoundary();
        headers.set(HTTPHeaderField::contentType, HTTPMediaType::multipartFormData(boundary));
        return writtenParts(options.parts, boundary);
    }
    if (request.httpBody())
        return {.content = request.httpBody(), .length = request.httpBody()->size()};
    return {};
}

} // namespace

EntityOptions Outbox::entity()
{
    const auto required = [](const char* name, AttributeKind kind, Any defaultValue = {}) {
        return AttributeDescription{.name = name, .kind = kind, .defaultValue = std::move(defaultValue)};
    };
    const auto optional = [](const char* name, AttributeKind kind) {
        return AttributeDescription{.name = name, .kind = kind, .isOptional = true};
    };
    return {.name = std::string(entityName),
        .attributes = {required("method", AttributeKind::Text), required("url", AttributeKind::Text),
            required("headers", AttributeKind::Bytes), required("timeoutInterval", AttributeKind::Double),
            required("bodyLength", AttributeKind::Int), required("hasStreamedBody", AttributeKind::Bool),
            required("addedAt", AttributeKind::Date), optional("key", AttributeKind::Text),
            required("state", AttributeKind::Int, std::int64_t(0)),
            required("attempts", AttributeKind::Int, std::int64_t(0)),
            optional("notBefore", AttributeKind::Date), optional("begunAt", AttributeKind::Date),
            optional("sender", AttributeKind::UUID), optional("reason", AttributeKind::Text)},
        .relationships = {{.name = "body",
            .destination = std::string(bodyEntityName),
            .deleteRule = DeleteRule::Cascade}},
        .objectClass = managedObjectClass<OutboxEntry>};
}

// Apart from the entry, so that a list of entries is read without bodies.
EntityOptions Outbox::bodyEntity()
{
    return {.name = std::string(bodyEntityName),
        .attributes = {{.name = "content", .kind = AttributeKind::Bytes}}};
}

OutboxAddition Outbox::add(const URLRequest& request, const OutboxOptions& options)
{
    check(request, options);
    const std::string entity(entityName);
    if (options.key) {
        auto kept = m_context->fetch<OutboxEntry>(
            {.entity = entity, .predicate = PredicateKey("key") == Any(*options.key), .fetchLimit = 1});
        if (!kept.empty())
            return {.entry = std::move(kept.front())};
    }
    const auto most = m_settings.maximumCount;
    if (most <= 0
        || !m_context->fetch({.entity = entity, .fetchLimit = 1, .fetchOffset = std::size_t(most) - 1})
                .empty())
        throw OutboxError(OutboxError::Kind::Full, std::to_string(most) + " requests are in the outbox");

    auto headers = request.httpHeaders();
    auto body = keptBody(request, options, headers);
    if (body.content && std::cmp_greater(body.content->size(), m_settings.maximumBodyLength))
        throw OutboxError(OutboxError::Kind::BodyTooLarge,
            "the body has " + std::to_string(body.content->size()) + " bytes to be kept");
    if (options.addsIdempotencyKey && !headers.contains(idempotencyKey))
        headers.set(idempotencyKey, UUID::random().uuidString());

    auto entry = m_context->insert<OutboxEntry>(entityName);
    entry->setValue("method", request.httpMethod());
    entry->setValue("url", request.url().absoluteString());
    entry->setValue("headers", detail::dataFromHeaders(headers));
    entry->setValue("timeoutInterval", request.timeoutInterval());
    entry->setValue("bodyLength", static_cast<std::int64_t>(body.length));
    entry->setValue("hasStreamedBody", body.isStreamed);
    entry->setValue("addedAt", Date::now());
    if (options.key)
        entry->setValue("key", *options.key);
    if (options.notBefore && *options.notBefore != Date::distantPast())
        entry->setValue("notBefore", *options.notBefore);
    if (body.content) {
        const auto kept = m_context->insert(bodyEntityName);
        kept->setValue("content", *std::move(body.content));
        entry->setObject("body", kept);
    }
    return {.entry = std::move(entry), .isNew = true};
}

Result<OutboxAddition, AnyError> Outbox::tryAdd(const URLRequest& request, const OutboxOptions& options)
{
    try {
        return Result<OutboxAddition, AnyError>::success(add(request, options));
    } catch (...) {
        return Result<OutboxAddition, AnyError>::failure(AnyError(std::current_exception()));
    }
}

} // namespace orrenby
