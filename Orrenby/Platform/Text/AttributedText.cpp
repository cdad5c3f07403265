#include "Orrenby/Platform/Text/AttributedText.hpp"

#include "Orrenby/Platform/Text/UTF16.hpp"
#include "Orrenby/Platform/Text/UTF8.hpp"
#include <algorithm>
#include <iterator>
#include <memory>

namespace orrenby::inline ORRENBY_ABI::detail {

void AttributedText::append(std::string_view piece, const TextAttributes& attributes)
{
    append(piece, utf16Length(piece), attributes);
}

void AttributedText::append(std::string_view piece, std::size_t units, const TextAttributes& attributes)
{
    if (piece.empty())
        return;
    if (!runs.empty() && runs.back().attributes == attributes) {
        runs.back().range.length += units;
        runs.back().byteCount += piece.size();
    } else
        runs.push_back({{length, units}, text.size(), piece.size(), attributes});
    text += piece;
    length += units;
}

void AttributedText::append(const AttributedText& other, TextPlace first, TextPlace last)
{
    if (&other == this) {
        append(AttributedText(other), first, last);
        return;
    }
    if (first.bytes == last.bytes)
        return;
    for (const auto* run = other.run(first.units); run != std::to_address(other.runs.end()); ++run) {
        if (run->byteOffset >= last.bytes)
            break;
        const TextPlace start{
            std::max(run->byteOffset, first.bytes), std::max(run->range.location, first.units)};
        const TextPlace stop{std::min(run->byteOffset + run->byteCount, last.bytes),
            std::min(run->range.upperBound(), last.units)};
        append(std::string_view(other.text).substr(start.bytes, stop.bytes - start.bytes),
            stop.units - start.units, run->attributes);
    }
}

const AttributedRun* AttributedText::run(std::size_t unit) const noexcept
{
    if (unit >= length)
        return nullptr;
    const auto behind = std::upper_bound(runs.begin(), runs.end(), unit,
        [](std::size_t wanted, const AttributedRun& run) { return wanted < run.range.location; });
    return &*std::prev(behind);
}

std::optional<TextPlace> AttributedText::place(std::size_t unit) const noexcept
{
    if (unit == length)
        return end();
    const auto* found = run(unit);
    if (found == nullptr)
        return std::nullopt;
    if (found->byteCount == found->range.length) // ASCII
        return TextPlace{found->byteOffset + (unit - found->range.location), unit};
    TextPlace place{found->byteOffset, found->range.location};
    while (place.units < unit) {
        const auto scalar = firstUTF8Scalar(std::string_view(text).substr(place.bytes));
        place.bytes += scalar.length;
        place.units += scalar.value < 0x10000 ? 1 : 2;
    }
    return place.units == unit ? std::optional(place) : std::nullopt;
}

std::optional<TextPart> AttributedText::part(NSRange range) const noexcept
{
    if (range.location > length || range.length > length - range.location)
        return std::nullopt;
    const auto first = place(range.location);
    const auto last = place(range.upperBound());
    return first && last ? std::optional(TextPart{*first, *last}) : std::nullopt;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
