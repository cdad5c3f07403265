#include "Orrenby/Platform/Net/QueryItems.hpp"

#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/URLEscapes.hpp"
#include "Orrenby/Platform/Net/URLPieces.hpp"
#include "Orrenby/Platform/Text/PercentEncoding.hpp"
#include <algorithm>
#include <iterator>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

bool isNothing(const URLQueryItem& item) { return item.name.empty() && !item.value; }

std::optional<std::string> decoded(std::string_view text, QueryEncoding form)
{
    if (form == QueryEncoding::Percent || text.find('+') == std::string_view::npos)
        return removingPercentEncoding(text);
    std::string withBlanks(text);
    std::replace(withBlanks.begin(), withBlanks.end(), '+', ' ');
    return removingPercentEncoding(withBlanks);
}

std::string escaped(std::string_view text, QueryEncoding form)
{
    if (form == QueryEncoding::Percent)
        return detail::escapedForURL(text, detail::URLPart::Query, "!$&'()*+,;=:@/?");
    std::string result;
    for (std::optional<std::string_view> rest = text; rest;) {
        auto word = *rest;
        rest = detail::takeBehind(word, ' ');
        result += detail::escapedForURL(word, detail::URLPart::Query, "!$&'()+,;=:@/?~");
        if (rest)
            result += '+';
    }
    return result;
}

} // namespace

QueryItems::QueryItems(std::initializer_list<URLQueryItem> items)
    : QueryItems(std::vector<URLQueryItem>(items))
{}

QueryItems::QueryItems(const std::vector<URLQueryItem>& items)
{
    std::remove_copy_if(items.begin(), items.end(), std::back_inserter(m_items), isNothing);
}

std::optional<QueryItems> QueryItems::make(std::string_view query, QueryEncoding form)
{
    QueryItems result;
    for (std::optional<std::string_view> rest = query; rest;) {
        auto name = *rest;
        rest = detail::takeBehind(name, '&');
        const auto value = detail::takeBehind(name, '=');
        auto decodedName = decoded(name, form);
        auto decodedValue = value ? decoded(*value, form) : std::nullopt;
        if (!decodedName || (value && !decodedValue))
            return std::nullopt;
        result.append({*std::move(decodedName), std::move(decodedValue)});
    }
    return result;
}

std::optional<QueryItems> QueryItems::make(const URL& url, QueryEncoding form)
{
    return make(url.query().value_or(""), form);
}

std::string QueryItems::encoded(QueryEncoding form) const
{
    std::string query;
    for (const auto& [name, value] : m_items) {
        if (!query.empty())
            query += '&';
        query += escaped(name, form);
        if (value)
            query += "=" + escaped(*value, form);
    }
    return query;
}

std::optional<std::string_view> QueryItems::first(std::string_view name) const
{
    const auto found = std::find_if(
        begin(), end(), [&](const URLQueryItem& item) { return item.name == name; });
    if (found == end())
        return std::nullopt;
    return found->value ? std::string_view(*found->value) : std::string_view();
}

std::vector<std::string> QueryItems::all(std::string_view name) const
{
    std::vector<std::string> values;
    for (const auto& item : m_items)
        if (item.name == name)
            values.push_back(item.value.value_or(""));
    return values;
}

bool QueryItems::contains(std::string_view name) const { return first(name).has_value(); }

void QueryItems::append(URLQueryItem item)
{
    if (!isNothing(item))
        m_items.push_back(std::move(item));
}

void QueryItems::set(std::string_view name, std::optional<std::string_view> value)
{
    auto item = URLQueryItem{std::string(name), value ? std::optional<std::string>(*value) : std::nullopt};
    const auto hasName = [&](const URLQueryItem& other) { return other.name == item.name; };
    const auto found = std::find_if(m_items.begin(), m_items.end(), hasName);
    if (found == m_items.end()) {
        append(std::move(item));
        return;
    }
    m_items.erase(std::remove_if(found + 1, m_items.end(), hasName), m_items.end());
    if (isNothing(item))
        m_items.erase(found);
    else
        *found = std::move(item);
}

std::size_t QueryItems::erase(std::string_view name)
{
    const std::string copy(name); // it may be the name of an item here
    return std::erase_if(m_items, [&](const URLQueryItem& item) { return item.name == copy; });
}

std::size_t QueryItems::hash() const noexcept
{
    std::size_t result = m_items.size();
    for (const auto& item : m_items)
        result = result * 31 + std::hash<URLQueryItem>()(item);
    return result;
}

} // namespace orrenby
