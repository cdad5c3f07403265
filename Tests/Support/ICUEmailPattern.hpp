#pragma once

/// @file
/// The pattern of e-mail addresses in the engine whose meaning of it counts.

#include "Orrenby/Platform/Text/EmailPattern.hpp"
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unicode/uregex.h>
#include <unicode/ustring.h>

namespace orrenby::testing {

/// Matches whole texts with ICU.
class ICUEmailPattern {
public:
    ICUEmailPattern()
    {
        const auto pattern = units(emailPattern());
        UErrorCode status = U_ZERO_ERROR;
        m_expression = uregex_open(
            pattern->data(), static_cast<std::int32_t>(pattern->size()), 0, nullptr, &status);
        uregex_setTimeLimit(m_expression, 1'000, &status); // steps of its own, some milliseconds each
        if (U_FAILURE(status))
            throw std::runtime_error(u_errorName(status));
    }
    ICUEmailPattern(const ICUEmailPattern&) = delete;
    ~ICUEmailPattern() { uregex_close(m_expression); }

    /// Nothing for what is no UTF-8, and when ICU gives up: for want of time or of stack.
    std::optional<bool> matches(std::string_view text) const
    {
        const auto converted = units(text);
        if (!converted)
            return std::nullopt;
        UErrorCode status = U_ZERO_ERROR;
        uregex_setText(
            m_expression, converted->data(), static_cast<std::int32_t>(converted->size()), &status);
        const bool isMatch = uregex_matches(m_expression, -1, &status) != 0;
        return U_SUCCESS(status) ? std::optional(isMatch) : std::nullopt;
    }

private:
    static std::optional<std::u16string> units(std::string_view text)
    {
        std::u16string result(text.size() + 1, u'\0'); // never more units than bytes
        std::int32_t length = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8(result.data(), static_cast<std::int32_t>(result.size()), &length, text.data(),
            static_cast<std::int32_t>(text.size()), &status);
        if (U_FAILURE(status))
            return std::nullopt;
        result.resize(static_cast<std::size_t>(length));
        return result;
    }

    URegularExpression* m_expression = nullptr;
};

} // namespace orrenby::testing
