#include "Settings/Language.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Terminal/Text.hpp"
#include <cstddef>
#include <memory>
#include <utility>

namespace fieldbook {

std::optional<orrenby::Locale> languageNamed(std::string_view text)
{
    constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
    constexpr std::size_t longest = 32;
    if (text.size() > longest || text.find_first_not_of(allowed) != std::string_view::npos)
        return {};
    auto locale = orrenby::Locale(text);
    const auto code = locale.languageCode();
    return code && (code->size() == 2 || code->size() == 3) ? std::optional(std::move(locale)) : std::nullopt;
}

void choose(const orrenby::Locale& language)
{
    orrenby::Locale::setCurrent(language);
    // Formatters keep the language that they were made for.
    orrenby::DateFormatters::setCache(std::make_shared<orrenby::DateFormatters::FormatterCache>());
}

std::string shownDate(orrenby::Date date)
{
    return printable(orrenby::DateFormatters::birthday()->string(date) + ", "
        + orrenby::DateFormatters::chatTime()->string(date));
}

} // namespace fieldbook
