#include "Orrenby/Foundation/Dates/Locales.hpp"

#include <mutex>
#include <unordered_map>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Never destroyed: texts are still looked for while the process exits.
struct Bundles {
    static Bundles& shared()
    {
        static auto& bundles = *new Bundles;
        return bundles;
    }

    std::mutex mutex;
    std::unordered_map<std::type_index, Bundle> byToken;
};

} // namespace

Locale Locales::active() { return Locale::current(); }

std::optional<std::string> Locales::activeLanguage() { return active().languageCode(); }

bool Locales::isActiveLanguage(std::string_view code)
{
    const auto language = activeLanguage();
    return language && language->starts_with(code);
}

bool Locales::isActiveLanguageEnglish() { return isActiveLanguage("en"); }

bool Locales::isActiveLanguageGerman() { return isActiveLanguage("de"); }

bool Locales::isActiveLanguageFrench() { return isActiveLanguage("fr"); }

bool Locales::isActiveLanguageKorean() { return isActiveLanguage("ko"); }

bool Locales::isActiveLanguageJapanese() { return isActiveLanguage("ja"); }

bool Locales::isActiveLanguageIndonesian() { return isActiveLanguage("id"); }

std::optional<Bundle> Locales::bundleOf(std::type_index token)
{
    auto& bundles = Bundles::shared();
    const auto lock = std::lock_guard(bundles.mutex);
    const auto place = bundles.byToken.find(token);
    return place == bundles.byToken.end() ? std::nullopt : std::optional(place->second);
}

void Locales::setBundleOf(std::type_index token, Bundle bundle)
{
    auto& bundles = Bundles::shared();
    const auto lock = std::lock_guard(bundles.mutex);
    bundles.byToken.insert_or_assign(token, std::move(bundle));
}

std::string RawRepresentation<Locales::LanguageCode>::rawValue(Locales::LanguageCode code)
{
    using Code = Locales::LanguageCode;
    switch (code) {
    case Code::englishUS:
        return "en_US";
    case Code::englishGB:
        return "en_GB";
    case Code::german:
        return "de";
    case Code::japanese:
        return "ja";
    case Code::french:
        return "fr";
    }
    return {};
}

std::optional<Locales::LanguageCode> RawRepresentation<Locales::LanguageCode>::make(
    std::string_view text) noexcept
{
    for (const auto code : allCases<Locales::LanguageCode>)
        if (rawValue(code) == text)
            return code;
    return std::nullopt;
}

std::string description(Locales::LanguageCode code)
{
    return RawRepresentation<Locales::LanguageCode>::rawValue(code);
}

} // namespace orrenby
