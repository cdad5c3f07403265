#include "Upload/ReportRequests.hpp"

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Service/ServiceMessages.hpp"
#include "Terminal/Text.hpp"

namespace fieldbook {

namespace {

using orrenby::HTTPMethod;

constexpr double patience = 20; // seconds

template <class Message> std::optional<Message> decoded(std::string_view text)
{
    try {
        return orrenby::JSONDecoder().decode<Message>(text);
    } catch (const orrenby::DecodingError&) {
        return {};
    }
}

} // namespace

orrenby::URLRequest requestTo(const orrenby::URL& service, std::string_view path)
{
    return orrenby::URLRequest(orrenby::URL::make(path, service).value(), patience);
}

orrenby::URLRequest signInRequest(const orrenby::URL& service, const orrenby::EmailAddress& user)
{
    return requestTo(service, "/session") | orrenby::using_(HTTPMethod::post)
        | orrenby::encoding({{"address", user.stringValue()}});
}

std::optional<std::string> tokenIn(std::string_view answer)
{
    auto message = decoded<SignInAnswer>(answer);
    return message ? std::optional(std::move(message->token)) : std::nullopt;
}

std::optional<std::string> problemIn(std::string_view answer)
{
    const auto message = decoded<ServiceProblem>(answer);
    return message ? std::optional(printable(message->problem)) : std::nullopt;
}

} // namespace fieldbook
