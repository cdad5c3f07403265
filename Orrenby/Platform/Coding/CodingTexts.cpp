#include "Orrenby/Platform/Coding/CodingTexts.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

std::string numberDoesNotFit(std::string_view text, std::string_view typeName)
{
    constexpr std::size_t mostShown = 40;
    auto result = "The number " + std::string(text.substr(0, mostShown));
    if (text.size() > mostShown)
        result += "…";
    return result + " does not fit in " + std::string(typeName);
}

std::string noNumberFor(double value) { return "JSON has no number for " + describeFloating(value); }

} // namespace orrenby::inline ORRENBY_ABI::detail
