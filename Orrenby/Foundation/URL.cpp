#include "Orrenby/Foundation/URL.hpp"

#include "Orrenby/Platform/Net/URLComponents.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

namespace {

URL withQuery(const URL& url, std::optional<std::string_view> query)
{
    auto components = URLComponents(url);
    if (!components.setPercentEncodedQuery(query))
        return url;
    return components.url().value_or(url);
}

} // namespace

namespace detail {

std::optional<Dictionary> queryParams(const URL& url)
{
    const auto items = URLComponents(url).queryItems();
    if (!items || items->empty())
        return std::nullopt;
    Dictionary params;
    for (const auto& [name, value] : *items)
        if (value && isValidUTF8(name) && isValidUTF8(*value))
            params.set(name, *value);
    return params;
}

URL prepending(URL url, const URL& baseURL)
{
    if (auto resolved = URLComponents(url).url(baseURL))
        return *std::move(resolved);
    Log::critical("URLComponents failed to concatenate baseURL",
        CallSite("Foundation/URLRequest+Builder", 178, "prepending(baseURL:)"));
    return url;
}

URL addingQueryItems(const URL& url, const QueryItems& items, QueryEncoding form)
{
    if (items.empty())
        return url;
    std::string query(url.query().value_or(""));
    if (!query.empty())
        query += '&';
    return withQuery(url, query + items.encoded(form));
}

URL settingQueryItems(const URL& url, const QueryItems& items, QueryEncoding form)
{
    if (items.empty())
        return withQuery(url, std::nullopt);
    return withQuery(url, items.encoded(form));
}

} // namespace detail

std::optional<URL> makeURL(std::optional<std::string_view> text)
{
    return text ? URL::make(*text) : std::nullopt;
}

} // namespace orrenby
