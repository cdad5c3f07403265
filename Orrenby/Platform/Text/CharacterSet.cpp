#include "Orrenby/Platform/Text/CharacterSet.hpp"

#include "Orrenby/Platform/Text/UTF8.hpp"
#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr char32_t lastScalar = 0x10FFFF;
constexpr char32_t lastBeforeSurrogates = 0xD7FF;
constexpr char32_t firstBehindSurrogates = 0xE000;

} // namespace

CharacterSet::CharacterSet(std::vector<Stretch> stretches)
{
    std::sort(stretches.begin(), stretches.end(),
        [](const Stretch& one, const Stretch& other) { return one.first < other.first; });
    for (const Stretch& stretch : stretches) {
        if (!m_stretches.empty() && stretch.first <= m_stretches.back().last + 1)
            m_stretches.back().last = std::max(m_stretches.back().last, stretch.last);
        else
            m_stretches.push_back(stretch);
    }
    for (char32_t scalar = 0; scalar < 128; ++scalar)
        if (containsBeyondASCII(scalar))
            m_ascii[scalar / 64] |= std::uint64_t{1} << (scalar % 64);
}

CharacterSet::CharacterSet(std::string_view members)
    : CharacterSet([&] {
        std::vector<Stretch> stretches;
        forEachScalar(members, [&](char32_t scalar) { stretches.push_back({scalar, scalar}); });
        return stretches;
    }())
{}

void CharacterSet::addRange(std::vector<Stretch>& stretches, char32_t first, char32_t last)
{
    const auto add = [&](char32_t low, char32_t high) {
        if (low <= high)
            stretches.push_back({low, high});
    };
    add(first, std::min(last, lastBeforeSurrogates));
    add(std::max(first, firstBehindSurrogates), std::min(last, lastScalar));
}

CharacterSet CharacterSet::fromRange(char32_t first, char32_t last)
{
    std::vector<Stretch> stretches;
    addRange(stretches, first, last);
    return CharacterSet(std::move(stretches));
}

bool CharacterSet::containsBeyondASCII(char32_t scalar) const noexcept
{
    const auto behind = std::upper_bound(m_stretches.begin(), m_stretches.end(), scalar,
        [](char32_t value, const Stretch& stretch) { return value < stretch.first; });
    return behind != m_stretches.begin() && scalar <= std::prev(behind)->last;
}

CharacterSet CharacterSet::inverted() const
{
    std::vector<Stretch> stretches;
    char32_t next = 0;
    for (const Stretch& stretch : m_stretches) {
        if (stretch.first > next)
            addRange(stretches, next, stretch.first - 1);
        next = stretch.last + 1;
    }
    addRange(stretches, next, lastScalar);
    return CharacterSet(std::move(stretches));
}

CharacterSet CharacterSet::union_(const CharacterSet& other) const
{
    auto stretches = m_stretches;
    stretches.insert(stretches.end(), other.m_stretches.begin(), other.m_stretches.end());
    return CharacterSet(std::move(stretches));
}

CharacterSet CharacterSet::intersection(const CharacterSet& other) const
{
    return inverted().union_(other.inverted()).inverted();
}

std::string CharacterSet::description() const
{
    std::string text;
    for (const auto [first, last] : m_stretches) {
        text += fmt::format("{}U+{:04X}", text.empty() ? "" : ", ", static_cast<std::uint32_t>(first));
        if (first != last)
            text += fmt::format(" to U+{:04X}", static_cast<std::uint32_t>(last));
    }
    return text.empty() ? "none" : text;
}

std::size_t CharacterSet::hash() const noexcept
{
    std::size_t result = m_stretches.size();
    for (const auto [first, last] : m_stretches)
        result = (result * 0x9E3779B97F4A7C15U + first) * 0x9E3779B97F4A7C15U + last;
    return result;
}

// The ready-made sets are never destroyed, so that texts can still be trimmed while the process exits.

const CharacterSet& CharacterSet::whitespaces()
{
    static const CharacterSet& set = *new CharacterSet(
        std::vector<Stretch>{{'\t', '\t'}, {' ', ' '}, {0xA0, 0xA0}, {0x1680, 0x1680}, {0x2000, 0x200A},
            {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000}});
    return set;
}

const CharacterSet& CharacterSet::newlines()
{
    static const CharacterSet& set = *new CharacterSet(
        std::vector<Stretch>{{0x0A, 0x0D}, {0x85, 0x85}, {0x2028, 0x2029}});
    return set;
}

const CharacterSet& CharacterSet::whitespacesAndNewlines()
{
    static const CharacterSet& set = *new CharacterSet(whitespaces().union_(newlines()));
    return set;
}

const CharacterSet& CharacterSet::urlQueryAllowed()
{
    static const CharacterSet& set = *new CharacterSet("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                                       "0123456789-._~!$&'()*+,;=:@/?");
    return set;
}

} // namespace orrenby
