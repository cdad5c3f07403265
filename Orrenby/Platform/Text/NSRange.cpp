#include "Orrenby/Platform/Text/NSRange.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string NSRange::description() const
{
    return "{" + std::to_string(location) + ", " + std::to_string(length) + "}";
}

} // namespace orrenby
