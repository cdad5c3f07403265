// What is escaped can be read back; what cannot be read back says where, and inside the text.

#include "Orrenby/Platform/Text/PercentEncoding.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Foundation/Text.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstddef>
#include <cstdint>

using namespace orrenby;

namespace {

void requireRoundTrip(std::string_view text, const std::optional<std::string>& encoded)
{
    requireThat(encoded.has_value() == isValidUTF8(text));
    if (encoded)
        requireThat(removingPercentEncoding(*encoded) == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto half = size / 2;

    // Any set may be allowed or escaped, but "%" must not stay where something is to be read back.
    const CharacterSet set(text.substr(0, half));
    const CharacterSet percent("%");
    requireRoundTrip(text, addingPercentEncoding(text, set.intersection(percent.inverted())));
    requireRoundTrip(text, addingPercentEscapes(text, set.union_(percent)));
    requireRoundTrip(text, urlencode(text));

    const auto decoded = tryRemovingPercentEncoding(text);
    if (decoded.isSuccess())
        requireThat(isValidUTF8(*decoded.value()));
    else
        requireThat(decoded.error()->position() < text.size());
    return 0;
}
