#pragma once

/// @file
/// What the application asks of the service.

#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// A request to the service for what stands at this path.
orrenby::URLRequest requestTo(const orrenby::URL& service, std::string_view path);

/// Asks for a token.
orrenby::URLRequest signInRequest(const orrenby::URL& service, const orrenby::EmailAddress& user);

/// The token in the answer to `signInRequest`; nothing when there is none.
std::optional<std::string> tokenIn(std::string_view answer);

/// What a service says against a request: its own words, or nothing.
std::optional<std::string> problemIn(std::string_view answer);

} // namespace fieldbook
