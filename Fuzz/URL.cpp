// URLs: whatever the bytes are, a text is a URL or none, its parts put together are the text, what is
// resolved is a URL that resolves to itself, and what is set in parts is read back.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Net/URLComponents.hpp"
#include <algorithm>
#include <string>
#include <vector>

using namespace orrenby;

namespace {

bool isURLCharacter(char character)
{
    return character > 0x20 && character < 0x7F
        && std::string_view("\"<>\\^`{|}").find(character) == std::string_view::npos;
}

bool hasOnlyURLCharacters(std::string_view text)
{
    for (const char character : text)
        if (!isURLCharacter(character))
            return false;
    return true;
}

void requireWhole(const URL& url)
{
    const URLComponents components(url);
    requireThat(components.string() == url.absoluteString());
    requireThat(components.url() == url);
    requireThat(components.scheme() == url.scheme());
    requireThat(components.percentEncodedUser() == url.user());
    requireThat(components.percentEncodedPassword() == url.password());
    requireThat(components.host().has_value() == url.host().has_value());
    requireThat(components.port() == url.port());
    requireThat(components.percentEncodedPath() == url.path());
    requireThat(components.percentEncodedQuery() == url.query());
    requireThat(components.percentEncodedFragment() == url.fragment());

    // What is decoded and set again may be escaped otherwise, but stands for the same.
    auto again = components;
    again.setUser(components.user());
    again.setPassword(components.password());
    // An escaped colon in a name makes an address when it is set plain.
    if (components.host() && components.host()->find(':') == std::string::npos)
        again.setHost(components.host());
    again.setPath(components.path());
    again.setFragment(components.fragment());
    again.setQueryItems(components.queryItems());
    requireThat(again.path() == components.path());
    requireThat(again.host() == components.host());
    if (const auto changed = again.url())
        requireThat(URLComponents(*changed) == again);
}

void requireResolved(const URL& base, std::string_view text)
{
    const auto own = URL::make(text);
    const auto resolved = URL::make(text, base);
    requireThat(resolved.has_value() == (own && (own->scheme() || base.scheme())));
    if (!resolved)
        return;
    requireThat(URL::make(resolved->absoluteString()) == resolved);
    requireThat(URL::make(resolved->absoluteString(), base) == resolved);
    requireThat(resolved->fragment() == own->fragment());
    requireThat(resolved->host() == (own->scheme() || own->host() ? own->host() : base.host()));
    requireThat(URLComponents(*own).url(base) == resolved);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Exactly as many bytes as there are, so that reading beyond them is noticed.
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());
    const auto blank = std::min(text.find(' '), text.size());
    const auto reference = text.substr(std::min(blank + 1, text.size()));

    const auto base = URL::make(text.substr(0, blank));
    if (base) {
        requireThat(hasOnlyURLCharacters(text.substr(0, blank)));
        requireWhole(*base);
        requireResolved(*base, reference);
    }
    requireThat(blank == text.size() || !URL::make(text));

    URLComponents components;
    components.setHost(reference);
    components.setPath("/" + std::string(text));
    components.setQuery(text);
    components.setFragment(reference);
    components.setQueryItems(std::vector<URLQueryItem>{{std::string(text), std::string(reference)}});
    const auto built = components.url();
    requireThat(built.has_value() && URLComponents(*built) == components);
    requireThat(components.path().substr(1) == text && components.fragment() == reference);
    requireThat(
        components.queryItems() == std::vector<URLQueryItem>{{std::string(text), std::string(reference)}});
    return 0;
}
