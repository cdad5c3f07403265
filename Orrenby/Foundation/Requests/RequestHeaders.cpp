#include "Orrenby/Foundation/Requests/RequestHeaders.hpp"

#include "Orrenby/Foundation/Requests/HTTPHeaderField.hpp"

namespace orrenby::inline ORRENBY_ABI {

URLRequest detail::requestUsing(URLRequest request, HTTPMethod method)
{
    request.setHTTPMethod(method.httpText());
    return request;
}

URLRequest detail::requestWithHeader(URLRequest request, std::string_view name, std::string_view value)
{
    request.setHTTPHeader(name, value);
    return request;
}

URLRequest detail::signedRequest(URLRequest request, std::optional<std::string_view> token)
{
    if (token && !token->empty()) {
        request.setHTTPHeader(
            HTTPHeaderField::authorization, std::string("Token token=\"").append(*token).append("\""));
        request.setHTTPHeader(HTTPHeaderField::authToken, *token);
    }
    return request;
}

std::optional<std::string> detail::authTokenOf(const URLRequest& request)
{
    return request.httpHeaders().valueForExactName(HTTPHeaderField::authToken);
}

URLRequest detail::requestWithAuthToken(URLRequest request, std::optional<std::string_view> token)
{
    request.setHTTPHeader(HTTPHeaderField::authToken, token);
    return request;
}

} // namespace orrenby
