#pragma once

/// @file
/// What the application asks of the service.

#include "Orrenby/Platform/Net/BodyStream.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Photo.hpp"
#include "Report.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// A report that is to be sent.
struct OutgoingReport {
    int number = 0;
    Report report;
    std::optional<Photo> photo;
};

/// A request, and the body that is sent with it.
struct SignedRequest {
    orrenby::URLRequest request;
    orrenby::BodyStream body;
};

/// Asks for a token.
orrenby::URLRequest signInRequest(const orrenby::URL& service, const orrenby::EmailAddress& user);

/// Sends the report as JSON and, behind it, its photo. The photo is read from its file while it is sent.
///
/// @throws orrenby::BodyStreamError  if the photo cannot be opened.
SignedRequest reportRequest(
    const orrenby::URL& service, const OutgoingReport& report, std::string_view token);

/// The token in the answer to `signInRequest`; nothing when there is none.
std::optional<std::string> tokenIn(std::string_view answer);

/// What a service says against a request: its own words, or nothing.
std::optional<std::string> problemIn(std::string_view answer);

} // namespace fieldbook
