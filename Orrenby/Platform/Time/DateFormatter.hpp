#pragma once

/// @file
/// Dates as text, and back.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Platform/Time/TimeZone.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Writes dates as text, and reads them.
///
/// The text follows a locale, with its calendar and digits, a time zone, and either a fixed format or the
/// locale's own styles. Formats are written in the letters of Unicode's date patterns: `yyyy` is the year,
/// `MM` the month, `HH` the hour, `'T'` a letter that stands for itself. `YYYY` is not the year but that of
/// the week, which is another one around New Year.
///
/// @snippet Tests/Platform/Time/DateFormatterTests.cpp Writing a date
///
/// A new one follows the locale and the zone that are current when it is made, later changes do not reach it,
/// and writes nothing: choose a format or a style. Of a format and the styles the one that was set last
/// counts.
///
/// The tables are loaded at the first use after a change, which costs tens of microseconds, and a text one or
/// two; so make one formatter for each purpose and keep it. The format of server timestamps,
/// `yyyy-MM-dd'T'HH:mm:ss.SSS'Z'` for GMT in `en_US_POSIX`, costs some 20 nanoseconds.
///
/// Held by `Ref`, as `std::make_shared` makes it. Once set up, safe to use from several threads; setting it
/// up while another thread uses it is not.
class ORRENBY_EXPORT DateFormatter {
public:
    /// How long the locale's own form is: for the time, `Long` and `Full` name the zone. `None` leaves the
    /// date or the time out.
    enum class Style : std::uint8_t { None, Short, Medium, Long, Full };

    DateFormatter();
    DateFormatter(const DateFormatter&) = delete;
    DateFormatter& operator=(const DateFormatter&) = delete;
    ~DateFormatter();

    /// A pattern for the fields of a template in the order and with the signs that people of a locale expect.
    /// `MMMMd` and `d MMMM` both give `MMMM d` in English and `d. MMMM` in German.
    ///
    /// What is not a field, quoted text included, does not count. Nothing when that leaves no field at all.
    ///
    /// @snippet Tests/Platform/Time/DateFormatterTests.cpp Asking for a format
    static std::optional<std::string> dateFormat(
        std::string_view fromTemplate, const Locale& locale = Locale::current());

    /// The fixed format, or else the pattern that the styles stand for; empty when neither was set.
    std::string dateFormat() const;

    /// A fixed format. Letters that mean nothing make all its texts empty. An empty one gives way to the
    /// styles.
    void setDateFormat(std::string format);

    /// Whose words and order the styles follow, and in whose words a format is written.
    Locale locale() const;
    void setLocale(Locale locale);

    /// Whose clocks the texts show.
    TimeZone timeZone() const;
    void setTimeZone(TimeZone zone);

    /// `None` until it is set. Without effect while there is a fixed format.
    Style dateStyle() const noexcept;
    /// Takes the place of a fixed format.
    void setDateStyle(Style style);

    /// `None` until it is set. Without effect while there is a fixed format.
    Style timeStyle() const noexcept;
    /// Takes the place of a fixed format.
    void setTimeStyle(Style style);

    /// The text of `date`, fractions of its last unit cut off. Empty when the formatter has neither format
    /// nor style, and for a date that is no moment. The ends of time are written as the last years that the
    /// calendar reckons with.
    std::string string(Date date) const;

    /// The date that the whole text stands for.
    ///
    /// Strict: fields out of their range, a missing or surplus character and white space where the format has
    /// none give nothing. Upper and lower case of names does not count, nor does the number of digits of a
    /// year, up to six, or of a fraction, up to nine. Units that the format leaves out are those of the start
    /// of 1970. Nothing for text that is no UTF-8, too.
    ///
    /// @snippet Tests/Platform/Time/DateFormatterReadingTests.cpp Reading a date
    std::optional<Date> date(std::string_view text) const;

    /// As `string`, into a buffer of the caller, without allocating where the format is that of server
    /// timestamps: those up to the year 9999 take 24 characters.
    ///
    /// @returns The characters that the text has. They are written, without an end mark, if that many fit;
    /// otherwise the buffer stays as it is.
    ///
    /// @snippet Tests/Platform/Time/DateFormatterTests.cpp Writing into a buffer
    std::size_t format(Date date, std::span<char> buffer) const;

    /// The pattern, the locale and the zone: `yyyy-MM-dd, en_US, GMT`.
    std::string description() const;

private:
    struct Parts;
    void change();

    detail::Owned<Parts> m_parts;
    bool m_isTimestamp = false; ///< The format, locale and zone are those of the server.
};

} // namespace orrenby
