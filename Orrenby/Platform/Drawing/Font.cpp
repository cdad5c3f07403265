#include "Orrenby/Platform/Drawing/Font.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr double usualCapHeight = 0.7; // of the size

std::size_t hashOf(double length) noexcept { return std::hash<double>{}(length == 0 ? 0.0 : length); }

} // namespace

Font::Font(FontOptions options)
    : m_name(std::move(options.name))
    , m_size(options.size)
    , m_capHeight(options.capHeight.value_or(options.size * usualCapHeight))
    , m_isBold(options.isBold)
    , m_isItalic(options.isItalic)
    , m_isMonospaced(options.isMonospaced)
{}

Font Font::withSize(double size) const
{
    auto result = *this;
    result.m_size = size;
    result.m_capHeight = m_size == 0 ? size * usualCapHeight : m_capHeight * (size / m_size);
    return result;
}

Font Font::bold(bool isBold) const
{
    auto result = *this;
    result.m_isBold = isBold;
    return result;
}

Font Font::italic(bool isItalic) const
{
    auto result = *this;
    result.m_isItalic = isItalic;
    return result;
}

std::string Font::description() const
{
    return m_name + " " + describe(m_size) + (m_isBold ? " bold" : "") + (m_isItalic ? " italic" : "")
        + (m_isMonospaced ? " monospaced" : "");
}

std::size_t Font::hash() const noexcept
{
    std::size_t result = std::hash<std::string>{}(m_name);
    for (const auto part : {hashOf(m_size), hashOf(m_capHeight), std::size_t{m_isBold},
             std::size_t{m_isItalic}, std::size_t{m_isMonospaced}})
        result = result * 0x9E3779B97F4A7C15U + part;
    return result;
}

} // namespace orrenby
