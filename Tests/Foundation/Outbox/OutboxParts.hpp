#pragma once

/// @file
/// Outboxes for the tests of the outbox.

#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include <string>
#include <vector>

namespace orrenby::tests {

/// The present moment of these tests.
inline const Date now(1'800'000'000);

/// Notes, and what of them is still to be sent.
inline Ref<const NSManagedObjectModel> outboxModel()
{
    return NSManagedObjectModel::make(
        1, {{.name = "Note", .attributes = {{.name = "text"}}}, Outbox::entity(), Outbox::bodyEntity()});
}

/// On the file, or in memory without one.
inline Ref<NSManagedObjectContext> outboxContext(const std::string& path = {})
{
    return make<NSManagedObjectContext>(
        PersistentStore::open(outboxModel(), {.path = path, .busyTimeout = 60}));
}

/// Another context of the same store.
inline Ref<NSManagedObjectContext> besides(const Ref<NSManagedObjectContext>& context)
{
    return make<NSManagedObjectContext>(context->persistentStore());
}

/// POST https://example.org/NAME
inline URLRequest requestNamed(const std::string& name)
{
    URLRequest request(URL::make("https://example.org/" + name).value());
    request.setHTTPMethod("POST");
    return request;
}

/// Puts requests in one by one, saved.
inline void addSaved(Outbox& outbox, const std::vector<std::string>& names)
{
    for (const auto& name : names) {
        outbox.add(requestNamed(name));
        outbox.context()->save();
    }
}

/// The last part of the address; "(none)" for no entry.
inline std::string nameOf(const Ref<OutboxEntry>& entry)
{
    return entry != nullptr ? std::string(entry->url().path().substr(1)) : "(none)";
}

inline std::vector<std::string> namesOf(const std::vector<Ref<OutboxEntry>>& entries)
{
    std::vector<std::string> names;
    for (const auto& entry : entries)
        names.push_back(nameOf(entry));
    return names;
}

/// The bytes of a body.
inline std::string textOf(BodyStream body)
{
    std::string text(body.length(), '\0');
    text.resize(body.read(std::as_writable_bytes(std::span(text))));
    return text;
}

} // namespace orrenby::tests
