#pragma once

/// @file
/// What a strict reader of dates refuses. Not in the umbrella header: `DateFormatter` asks before it reads.

#include "Orrenby/Platform/Export.hpp"
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Knows what of that which ICU reads a strict reader has to refuse.
///
/// ICU reads a text that ends before the last signs of the pattern do, and skips white space before fields.
/// Numbers of many digits overflow in it, up to a division by zero that ends the process.
///
/// Pattern and texts are UTF-16. Never changes once it is made.
class DateStrictness {
public:
    explicit DateStrictness(std::u16string_view pattern);

    /// Whether a text may be given to ICU. Linear.
    bool admits(std::u16string_view text) const;

private:
    /// Numeric fields without a sign between them. Each of several has the digits that it has letters; one
    /// alone may have more.
    struct Number {
        int limit() const;

        int digits = 0;
        bool isAlone = true;
        bool isLong = false;
    };

    void addSign(char16_t unit);
    void addLetter(char16_t letter, char16_t previous);

    bool admitsBlanks(std::u16string_view text) const;
    bool admitsNumbers(std::u16string_view text) const;
    /// Whether each number of a text can be told to be that of a field: no name and no sign holds digits.
    bool areNumbersKnown() const noexcept { return !m_hasNames && !m_hasDigits; }
    int limitOf(std::size_t number) const;

    std::vector<Number> m_numbers;
    std::u16string m_end; ///< The signs after the last field.
    int m_length = 0;     ///< Letters of the field.
    bool m_hasFields = false;
    bool m_hasNames = false;
    bool m_hasDigits = false; ///< Among the signs.
    bool m_hasBlanks = false;
    bool m_beginsBlank = false;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
