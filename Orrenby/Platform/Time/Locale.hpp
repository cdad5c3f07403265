#pragma once

/// @file
/// The language and the customs that texts for people follow.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// A language, with the region whose customs apply: month names, order of fields, digits, calendar.
///
/// It says which, and knows no texts itself: those are ICU's tables. For a locale that has none there, texts
/// follow its language, then the locale of the machine. The calendar and the digits are the region's unless
/// the identifier names others: `ja_JP@calendar=japanese`, `ar_EG@numbers=latn`.
///
/// @snippet Tests/Platform/Time/LocaleTests.cpp Asking for the language
///
/// A value of one shared pointer; copies cost one atomic increment. Safe to use from several threads.
class ORRENBY_EXPORT Locale {
public:
    /// Any text makes a locale. What stands for the same is written in one way: `de-de` is `de_DE`, `iw` is
    /// `he`, `en_US.UTF-8` is `en_US`. A text that names no language gives the neutral locale, whose
    /// identifier is empty.
    explicit Locale(std::string_view identifier);

    /// That of the current world, which is `system()` unless the application or a test chose another.
    ///
    /// @snippet Tests/Platform/Time/LocaleTests.cpp Choosing a locale
    static Locale current();

    /// Makes `locale` the current one for the rest of the process: at start-up, or when people choose another
    /// language. What was made for the one before keeps that. See `World::setCurrent` for threads.
    static void setCurrent(Locale locale);

    /// What the environment asks for (`LC_ALL`, `LC_MESSAGES`, `LANG`), read once; `en_US_POSIX` when it asks
    /// for nothing or for `C`.
    static Locale system();

    /// For instance `en_GB` or `sr_Latn_RS`.
    const std::string& identifier() const noexcept;

    /// The language alone, in lower case: `en` for `en_GB`. Nothing for the neutral locale.
    std::optional<std::string> languageCode() const;

    /// `Latn` in `sr_Latn_RS`. Nothing unless the identifier names one.
    std::optional<std::string> scriptCode() const;

    /// `GB` in `en_GB`. Nothing unless the identifier names one.
    std::optional<std::string> regionCode() const;

    /// The identifier.
    const std::string& description() const noexcept { return identifier(); }

    /// Whether both have the same identifier.
    friend bool operator==(const Locale& first, const Locale& second) noexcept
    {
        return first.m_contents == second.m_contents || first.identifier() == second.identifier();
    }

private:
    struct Contents;
    std::shared_ptr<const Contents> m_contents;
};

} // namespace orrenby

template <> struct std::hash<orrenby::Locale> {
    std::size_t operator()(const orrenby::Locale& locale) const noexcept
    {
        return std::hash<std::string>()(locale.identifier());
    }
};
