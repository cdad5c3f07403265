#pragma once

/// @file
/// The request of a report, without an outbox that is kept.

#include "Examples/Fieldbook/Store/StoreFile.hpp"
#include "Examples/Fieldbook/Upload/ReportOutbox.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include <string_view>

namespace fieldbook {

/// As the application sends it: it goes through an outbox.
inline SignedRequest reportRequest(
    const orrenby::URL& service, const OutgoingReport& report, std::string_view token)
{
    const auto sender = orrenby::EmailAddress::make({.stringValue = "ada@hut.example"}).value();
    auto outbox = ReportOutbox(StoreFile::inMemory()->memory());
    const auto put = outbox.put({{report}, service, sender});
    return ReportOutbox::request(*put.queued.at(0).entry, service, token);
}

} // namespace fieldbook
