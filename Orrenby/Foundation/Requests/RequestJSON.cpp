#include "Orrenby/Foundation/Requests/RequestJSON.hpp"

#include "Orrenby/Foundation/Requests/HTTPHeaderField.hpp"
#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr auto source = "Foundation/URLRequest+Builder";

} // namespace

URLRequest detail::requestEncoding(URLRequest request, const Dictionary& json)
{
    if (request.httpBody())
        return request;
    if (auto body = NSJSONSerialization::tryDataWithJSONObject(json); body.isSuccess())
        setJSONBody(request, std::move(body).unwrap());
    else
        Log::error("JSONSerialization Error.", CallSite(source, 0, "encoding(json:)"));
    return request;
}

void detail::setJSONBody(URLRequest& request, Data body)
{
    request.setHTTPBody(std::move(body));
    request.setHTTPHeader(HTTPHeaderField::contentType, HTTPMediaType::json);
}

void detail::reportUnencodableObject()
{
    Log::error("JSON encoding Error.", CallSite(source, 0, "encoding(object:dateEncodingStrategy:)"));
}

} // namespace orrenby
