#include "Orrenby/Foundation/Text.hpp"

#include "Orrenby/Platform/Text/PercentEncoding.hpp"
#include "Orrenby/Platform/Text/Trimming.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

std::string trimmed(std::string_view text)
{
    return std::string(trimmingCharacters(text, CharacterSet::whitespacesAndNewlines()));
}

std::optional<std::string> urlEncoded(std::string_view text)
{
    // Never destroyed, so that texts can still be escaped while the process exits.
    static const CharacterSet& escaped = *new CharacterSet("!*'();:@&=+$,/?%#[] \n");
    return addingPercentEscapes(text, escaped);
}

} // namespace detail

bool hasAnyPrefixFrom(std::string_view text, const NSSet& prefixes)
{
    return std::any_of(prefixes.begin(), prefixes.end(), [&](const Any& prefix) {
        return prefix.kind() == Any::Kind::Text && text.starts_with(prefix.text());
    });
}

std::string nonLocalized(std::string_view text) { return std::string(text); }

} // namespace orrenby
