#include "Orrenby/Platform/Text/Trimming.hpp"

#include "Orrenby/Platform/Text/UTF8.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string_view trimmingCharacters(std::string_view text, const CharacterSet& set) noexcept
{
    const auto isCutOff = [&](const UTF8Scalar& scalar) {
        return scalar.isValid && set.contains(scalar.value);
    };
    while (!text.empty()) {
        const auto scalar = firstUTF8Scalar(text);
        if (!isCutOff(scalar))
            break;
        text.remove_prefix(scalar.length);
    }
    while (!text.empty()) {
        const auto scalar = lastUTF8Scalar(text);
        if (!isCutOff(scalar))
            break;
        text.remove_suffix(scalar.length);
    }
    return text;
}

} // namespace orrenby
