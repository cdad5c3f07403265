#include "Orrenby/Platform/Text/DataMatch.hpp"

#include <initializer_list>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

std::string description(DataKind kinds)
{
    std::string text;
    for (const auto& [kind, name] : {std::pair(DataKind::Address, "Address"),
             std::pair(DataKind::Link, "Link"), std::pair(DataKind::PhoneNumber, "PhoneNumber")})
        if (hasKind(kinds, kind))
            text.append(text.empty() ? "" : " | ").append(name);
    return text.empty() ? "None" : text;
}

std::string DataMatch::description() const
{
    auto text = orrenby::description(kind) + " " + range.description();
    if (url)
        text.append(": ").append(url->absoluteString());
    return text;
}

} // namespace orrenby

std::size_t std::hash<orrenby::DataMatch>::operator()(const orrenby::DataMatch& match) const noexcept
{
    constexpr std::size_t factor = 0x9E3779B97F4A7C15U;
    auto result = static_cast<std::size_t>(match.kind);
    result = result * factor + std::hash<orrenby::NSRange>()(match.range);
    result = result * factor + match.byteOffset;
    result = result * factor + match.byteCount;
    return result * factor + (match.url ? std::hash<orrenby::URL>()(*match.url) + 1 : 0);
}
