#pragma once

/// @file
/// Which language the application speaks, and where its texts are.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/World/Bundle.hpp"
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <typeindex>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

template <class T>
concept NamesItsTranslationToken = requires
{
    typename T::TranslationToken;
};

/// The class under which the bundle of `T`'s library is registered.
template <class T> struct TranslationTokenOf {
    using type = T;
};
template <NamesItsTranslationToken T> struct TranslationTokenOf<T> {
    using type = typename T::TranslationToken;
};

} // namespace detail

/// Questions about the current locale.
///
/// They ask `Locale::current()` each time, and look at the language alone: in English (United Kingdom) it is
/// "en", and no "en_GB".
///
/// @snippet Tests/Foundation/Dates/LocalesTests.cpp Asking for the language
///
/// Safe to use from several threads.
class ORRENBY_EXPORT Locales {
public:
    /// Languages that texts come in. The raw value is the text that names it: "en_US", "en_GB", "de", "ja",
    /// "fr".
    enum class LanguageCode : std::uint8_t { englishUS, englishGB, german, japanese, french };

    Locales() = delete;

    /// The current locale.
    static Locale active();

    /// Its language, such as "en". Nothing for the neutral locale.
    static std::optional<std::string> activeLanguage();

    /// Whether the language begins with `code`, which is so for every language when it is empty. Upper and
    /// lower case differ. False when there is no language.
    static bool isActiveLanguage(std::string_view code);

    /// `isActiveLanguage` with "en", "de", "fr", "ko", "ja", "id".
    static bool isActiveLanguageEnglish();
    static bool isActiveLanguageGerman();
    static bool isActiveLanguageFrench();
    static bool isActiveLanguageKorean();
    static bool isActiveLanguageJapanese();
    static bool isActiveLanguageIndonesian();

    /// The bundle with the texts of the library that `TokenClass` is part of: the one that this library has
    /// registered, or else the application's.
    ///
    /// A library registers its bundle under one class of its own. Its other classes point there, if they are
    /// to be asked for too, with a type `TranslationToken`.
    ///
    /// @snippet Tests/Foundation/Dates/LocalesTests.cpp Finding the texts of a library
    template <class TokenClass> static Bundle translationBundle()
    {
        return bundleOf(typeid(TokenFor<TokenClass>)).value_or(Bundle::main());
    }

    /// Registers `bundle` for the library of `TokenClass`, in place of one registered before.
    template <class TokenClass> static void registerTranslationBundle(Bundle bundle)
    {
        setBundleOf(typeid(TokenFor<TokenClass>), std::move(bundle));
    }

private:
    template <class T> using TokenFor = typename detail::TranslationTokenOf<T>::type;

    static std::optional<Bundle> bundleOf(std::type_index token);
    static void setBundleOf(std::type_index token, Bundle bundle);
};

template <>
inline constexpr Locales::LanguageCode allCases<Locales::LanguageCode>[] = {Locales::LanguageCode::englishUS,
    Locales::LanguageCode::englishGB, Locales::LanguageCode::german, Locales::LanguageCode::japanese,
    Locales::LanguageCode::french};

/// By its text.
template <> struct RawRepresentation<Locales::LanguageCode> {
    using RawValue = std::string;

    /// What stands for the language and its region, such as "en_US".
    ORRENBY_EXPORT static std::string rawValue(Locales::LanguageCode code);
    /// Nothing for other texts, "en" among them.
    ORRENBY_EXPORT static std::optional<Locales::LanguageCode> make(std::string_view text) noexcept;
};

/// The raw value.
ORRENBY_EXPORT std::string description(Locales::LanguageCode code);

} // namespace orrenby
