// Step 18: links, mail addresses, telephone numbers and postal addresses in running text.

#include "Orrenby/Standard/DetectedData.hpp"
#include <cstdio>
#include <string>

using namespace orrenby;

namespace {

const char* name(DataKind kind)
{
    switch (kind) {
    case DataKind::Address:
        return "address";
    case DataKind::PhoneNumber:
        return "phone";
    default:
        return "link";
    }
}

} // namespace

int main()
{
    const std::string text = "A heron at 12 Lake Road, Dover, DE 19901! Ring 0161 496 0123\n"
                             "or write to anna@example.com; pictures: (example.com/heron_(young)).\n";
    std::printf("%s\n", text.c_str());

    for (const auto& match : detect(text)) {
        const std::string found(match.in(text));
        std::printf(
            "%-8s%zu+%zu  %s", name(match.kind), match.range.location, match.range.length, found.c_str());
        if (match.url)
            std::printf("  <%s>", match.url->absoluteString().c_str());
        std::printf("\n");
    }

    std::printf("\nweb link %d, mail %d, phone %d, address %d\n", containsURL(text), containsEmail(text),
        containsPhoneNumber(text), containsAddress(text));
    return containsURL("MAILTO:a@b.co") ? 0 : 1; // the spelling of the scheme counts
}
