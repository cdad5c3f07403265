// Detecting data: whatever the bytes are, matches lie in order inside the text, do not overlap, begin and end
// between two scalar values in both ways of counting, and cost a bounded number of looks at each byte.

#include "Orrenby/Platform/Text/DataDetector.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"

using namespace orrenby;

namespace {

void requireSound(const DataMatch& match, const UTF16View& view)
{
    requireThat(match.byteCount > 0 && match.byteOffset + match.byteCount <= view.text().size());
    requireThat(view.range(match.byteOffset, match.byteCount) == match.range);
    requireThat(match.url.has_value() == (match.kind == DataKind::Link));
    if (match.url) {
        requireThat(!match.scheme().empty());
        requireThat(URL::make(match.url->absoluteString()) == match.url);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Exactly as many bytes as there are, so that reading beyond them is noticed.
    const std::vector<char> bytes(data, data + size);
    const std::string_view text(bytes.data(), bytes.size());
    const UTF16View view(text);
    DataDetector::Scan scan(DataDetector(DataKind::All), text);
    std::size_t end = 0;
    std::size_t links = 0;
    while (const auto match = scan.next()) {
        requireSound(*match, view);
        requireThat(match->byteOffset >= end);
        end = match->byteOffset + match->byteCount;
        links += match->kind == DataKind::Link ? 1 : 0;
    }
    requireThat(scan.work() <= 1'000 + 100 * size);
    requireThat(DataDetector(DataKind::Link).matches(text).size() == links);
    return 0;
}
