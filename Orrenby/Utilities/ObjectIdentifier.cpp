#include "Orrenby/Utilities/ObjectIdentifier.hpp"

#include <cstdint>

namespace orrenby::inline ORRENBY_ABI {

std::string ObjectIdentifier::debugDescription() const
{
    auto digits = std::string(2 * sizeof(std::uint64_t), '0');
    auto rest = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(m_address));
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, rest /= 16)
        *digit = "0123456789abcdef"[rest % 16];
    return "ObjectIdentifier(0x" + digits + ")";
}

} // namespace orrenby
