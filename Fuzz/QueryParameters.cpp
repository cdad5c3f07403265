// Queries: what the list of items writes is read back whoever reads it, reading never loses an item, and the
// dictionaries hold what the texts say.

#include "Orrenby/Foundation/QueryParameters.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Foundation/URL.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <algorithm>
#include <string>
#include <vector>

using namespace orrenby;

namespace {

void requireReadBack(const QueryItems& items)
{
    const auto percent = items.encoded();
    const auto form = items.encoded(QueryEncoding::Form);
    requireThat(QueryItems::make(percent) == items);
    requireThat(QueryItems::make(percent, QueryEncoding::Form) == items);
    requireThat(QueryItems::make(form, QueryEncoding::Form) == items);
    const auto url = ""_url | settingQueryItems(items);
    requireThat(QueryItems::make(url) == items);
    requireThat(QueryItems::make(url | addingQueryItems(items))->size() == 2 * items.size());
}

void requireParameters(std::string_view text)
{
    const auto parameters = queryParameters(text);
    requireThat(parameters.size() <= static_cast<std::size_t>(std::count(text.begin(), text.end(), '=')));
    for (const auto& [key, value] : parameters)
        requireThat(URL::make("?" + key + "=" + std::string(value.text())).has_value());
    const auto query = urlEncodeQueryParameters(parameters);
    requireThat(pathByAppendingQueryParameters(text, parameters) == std::string(text) + "?" + query);

    // Keys and values are ASCII by now, and one escape is taken back by one decoding.
    const auto items = QueryItems::make(query);
    requireThat(items && items->size() == parameters.size());
    for (const auto& [name, value] : *items)
        requireThat(parameters[name].text() == value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Exactly as many bytes as there are, so that reading beyond them is noticed.
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());

    for (const auto encoding : {QueryEncoding::Percent, QueryEncoding::Form})
        if (const auto items = QueryItems::make(text, encoding))
            requireReadBack(*items);
    requireParameters(text);

    const auto half = text.substr(0, size / 2);
    const auto rest = text.substr(size / 2);
    if (isValidUTF8(half) && isValidUTF8(rest))
        requireReadBack(
            {{std::string(half), std::string(rest)}, {std::string(rest)}, {std::string(half), ""}});

    if (const auto url = URL::make(text))
        if (const auto params = *url | queryParams)
            requireThat(url->query() && !url->query()->empty());
    return 0;
}
