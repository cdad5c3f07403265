#include "Orrenby/Foundation/UUID.hpp"

#include "Orrenby/Platform/Text/Hexadecimal.hpp"
#include <span>

namespace orrenby::inline ORRENBY_ABI {

std::string detail::lowercaseDigits(const UUID& uuid)
{
    return hexadecimalText(std::as_bytes(std::span(uuid.bytes()))); // they stand in the order of the text
}

} // namespace orrenby
