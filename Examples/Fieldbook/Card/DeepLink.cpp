#include "Card/DeepLink.hpp"

#include "Terminal/Text.hpp"

namespace fieldbook {

std::optional<int> DeepLink::report() const
{
    const auto start = std::string(scheme) + "report/";
    if (!text.starts_with(start))
        return std::nullopt;
    return numberIn(std::string_view(text).substr(start.size()));
}

} // namespace fieldbook
