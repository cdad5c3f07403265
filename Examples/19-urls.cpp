// Step 19: addresses resolved, taken apart, and queries that lose nothing.

#include "Orrenby/Foundation/QueryParameters.hpp"
#include "Orrenby/Foundation/URL.hpp"
#include "Orrenby/Platform/Net/URLComponents.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

namespace {

void print(const char* what, const std::string& text) { std::printf("%-11s%s\n", what, text.c_str()); }

std::string shown(const std::optional<URL>& url) { return url ? url->absoluteString() : "none"; }

} // namespace

int main()
{
    // A text is a URL or it is none; nothing is mended.
    print("made", shown(makeURL("https://example.com/herons")));
    print("blank", shown(makeURL("https://example.com/grey heron")));

    // Relative to a base.
    const auto base = "https://api.example.com/v2/feed?page=1"_url;
    print("relative", shown("herons/7.jpg"_url | prepending(base)));
    print("upwards", shown("../v1/owls"_url | prepending(base)));

    // Parts are decoded when they are read and escaped when they are set.
    auto parts = URLComponents(base);
    parts.setPath("/grey heron/50%");
    parts.setFragment("café");
    print("parts", shown(parts.url()) + "  (" + parts.path() + ")");

    // Items keep their order, and a name may come twice.
    const auto found = base
        | addingQueryItems(QueryItems{{"tag", "grey & young"}, {"tag", "1 + 1"}, {"sorted"}});
    print("items", shown(found));
    for (const auto& tag : QueryItems::make(found)->all("tag"))
        print("tag", tag);
    print("as a form", QueryItems::make(found)->encoded(QueryEncoding::Form));

    // The dictionaries keep one value of a name, and their old habits: this one encodes what is encoded.
    print("params", describe(*queryParams(found)));
    print("parameters", describe(queryParameters("feed?q=grey%20heron")));
    print("path", "feed" | pathByAppendingQueryParameters(Dictionary{{"page", 2}, {"exact", true}}));
    return 0;
}
