#include "Orrenby/Platform/Time/Locale.hpp"

#include "Orrenby/Platform/World/World.hpp"
#include <algorithm>
#include <unicode/locid.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

bool isLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Not one whose language is no code of two to eight letters. Nor what becomes something else when it is made
/// canonical again: only malformed texts do.
bool isSound(const icu::Locale& locale)
{
    if (locale.isBogus() || icu::Locale::createCanonical(locale.getName()) != locale)
        return false;
    const std::string_view language = locale.getLanguage();
    return language.size() >= 2 && language.size() <= 8
        && std::all_of(language.begin(), language.end(), isLetter);
}

/// The neutral locale in place of one that is not sound.
icu::Locale canonical(const std::string& identifier)
{
    const auto locale = icu::Locale::createCanonical(identifier.c_str());
    return isSound(locale) ? locale : icu::Locale::getRoot();
}

std::optional<std::string> unlessEmpty(const std::string& code)
{
    return code.empty() ? std::nullopt : std::optional(code);
}

} // namespace

struct Locale::Contents {
    explicit Contents(const icu::Locale& locale)
        : identifier(locale.getName())
        , language(locale.getLanguage())
        , script(locale.getScript())
        , region(locale.getCountry())
    {}

    std::string identifier;
    std::string language;
    std::string script;
    std::string region;
};

Locale::Locale(std::string_view identifier)
    : m_contents(std::make_shared<const Contents>(canonical(std::string(identifier))))
{}

Locale Locale::current() { return World::current().locale(); }

void Locale::setCurrent(Locale locale)
{
    auto world = World::current();
    world.setLocale(std::move(locale));
    World::setCurrent(std::move(world));
}

Locale Locale::system()
{
    static const auto& locale = *new Locale(icu::Locale::getDefault().getName());
    return locale;
}

const std::string& Locale::identifier() const noexcept { return m_contents->identifier; }

std::optional<std::string> Locale::languageCode() const { return unlessEmpty(m_contents->language); }

std::optional<std::string> Locale::scriptCode() const { return unlessEmpty(m_contents->script); }

std::optional<std::string> Locale::regionCode() const { return unlessEmpty(m_contents->region); }

} // namespace orrenby
