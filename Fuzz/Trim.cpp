// What trimming leaves is a piece of the text, and what it cuts off is white space and nothing else; ranges
// and characters of any bytes cover them once.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Foundation/Text.hpp"
#include "Orrenby/Platform/Text/Characters.hpp"
#include "Orrenby/Platform/Text/Trimming.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <cstddef>
#include <cstdint>

using namespace orrenby;

namespace {

void requireBlank(std::string_view text)
{
    forEachScalar(
        text, [](char32_t scalar) { requireThat(CharacterSet::whitespacesAndNewlines().contains(scalar)); });
}

void requireTrimmed(std::string_view text)
{
    const auto piece = trimmingCharacters(text, CharacterSet::whitespacesAndNewlines());
    requireThat(trim(text) == piece);
    requireThat(trim(piece) == piece);
    const auto start = static_cast<std::size_t>(piece.data() - text.data());
    requireBlank(text.substr(0, start));
    requireBlank(text.substr(start + piece.size()));
}

void requireWholeCharacters(std::string_view text)
{
    const UTF16View view(text);
    std::size_t bytes = 0;
    for (const auto character : characters(text)) {
        const auto range = view.range(character);
        requireThat(character.data() == text.data() + bytes && range.has_value());
        requireThat(view.slice(*range) == character);
        bytes += character.size();
    }
    requireThat(bytes == text.size());
    requireThat(utf8FromUTF16(utf16FromUTF8(text)) == replacingInvalidUTF8(std::string(text)));
    requireThat(utf16FromUTF8(text).size() == view.length());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    requireTrimmed(text);
    requireWholeCharacters(text);
    return 0;
}
