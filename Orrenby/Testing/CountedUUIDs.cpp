#include "Orrenby/Testing/CountedUUIDs.hpp"

namespace orrenby::inline ORRENBY_ABI::testing {

UUID CountedUUIDs::next()
{
    auto bytes = UUID::Bytes{};
    bytes[6] = 0x40; // version 4
    bytes[8] = 0x80; // the variant that has versions
    auto rest = ++m_count;
    for (std::size_t index = bytes.size(); index-- > 10; rest >>= 8)
        bytes[index] = static_cast<std::uint8_t>(rest);
    return UUID(bytes);
}

} // namespace orrenby::testing
