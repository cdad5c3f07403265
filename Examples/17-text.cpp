// Step 17: text is UTF-8; ranges are UTF-16 units; small operations clean, escape and hash it.

#include "Orrenby/Foundation/Countdowns.hpp"
#include "Orrenby/Foundation/Hashes.hpp"
#include "Orrenby/Foundation/Text.hpp"
#include "Orrenby/Platform/Text/RegularExpression.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Orrenby/Standard/Texts.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

int main()
{
    const std::string typed = "\t Tea & cake, 5€\n";
    const auto search = typed | trim;
    std::printf("trimmed    [%s]\n", search.c_str());
    std::printf("escaped    %s\n", (search | urlencode).value().c_str());
    std::printf("has prefix %s\n", hasAnyPrefixFrom(search, {"Coffee", "Tea"}) ? "yes" : "no");

    // The hashes are the same in every run and on every machine.
    std::printf("djb2       %lld\n", static_cast<long long>(djb2Hash(search)));
    std::printf("sha1       %s\n", sha1Hash(search).value().c_str());

    // A waving hand is two units of UTF-16, four bytes of UTF-8.
    const std::string caption = "👋 see <Häuser> and <Gärten>";
    const UTF16View view(caption);
    const RegularExpression link("<(.+?)>");
    for (const auto& match : link.allMatches(caption)) {
        const auto title = view.slice(match.range(1).value()).value();
        std::printf("link       %s at %s\n", std::string(title).c_str(), match.range().description().c_str());
    }
    std::printf("plain      %s\n", link.replacingMatches(caption, "$1").c_str());

    const auto broken = RegularExpression::tryMake("<(.+?>");
    std::printf("error      %s\n", broken.error()->description().c_str());

    std::printf("remaining  %s\n", formattedCountdown(3725.25).c_str());
    return fullRange(caption).length == 28 ? 0 : 1;
}
