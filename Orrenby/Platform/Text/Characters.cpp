#include "Orrenby/Platform/Text/Characters.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>
#include <cstdint>
#include <memory>
#include <unicode/ubrk.h>
#include <unicode/utext.h>

namespace orrenby::inline ORRENBY_ABI {

namespace {

struct ClosesText {
    void operator()(UText* text) const noexcept { utext_close(text); }
};
struct ClosesBreaks {
    void operator()(UBreakIterator* breaks) const noexcept { ubrk_close(breaks); }
};

/// Calls with the end of each character, as an offset in bytes.
template <class F> void forEachEnd(std::string_view text, F perform)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UText, ClosesText> opened(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    const std::unique_ptr<UBreakIterator, ClosesBreaks> breaks(
        ubrk_open(UBRK_CHARACTER, "root", nullptr, 0, &status));
    if (U_SUCCESS(status))
        ubrk_setUText(breaks.get(), opened.get(), &status);
    if (U_FAILURE(status))
        fatalError("The tables of Unicode are not available", "Platform/Text/Characters");
    for (auto end = ubrk_next(breaks.get()); end != UBRK_DONE; end = ubrk_next(breaks.get()))
        perform(static_cast<std::size_t>(end));
}

/// In ASCII only the end of a line is longer than one byte, and only when it begins with this.
bool isPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
        [](char character) { return static_cast<unsigned char>(character) < 128 && character != '\r'; });
}

} // namespace

std::vector<std::string_view> characters(std::string_view text)
{
    std::vector<std::string_view> result;
    result.reserve(text.size());
    if (isPlain(text)) {
        for (std::size_t place = 0; place < text.size(); ++place)
            result.push_back(text.substr(place, 1));
        return result;
    }
    std::size_t start = 0;
    forEachEnd(text, [&](std::size_t end) {
        result.push_back(text.substr(start, end - start));
        start = end;
    });
    return result;
}

std::size_t characterCount(std::string_view text)
{
    if (isPlain(text))
        return text.size();
    std::size_t count = 0;
    forEachEnd(text, [&](std::size_t) { ++count; });
    return count;
}

} // namespace orrenby
