#include "Orrenby/Platform/Coding/CodingKey.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"

namespace orrenby::inline ORRENBY_ABI {

CodingKey CodingKey::integer(std::int64_t value) { return {std::to_string(value), value}; }

CodingKey CodingKey::place(std::int64_t index) { return {"Index " + std::to_string(index), index}; }

std::string CodingKey::debugDescription() const
{
    return "CodingKey(stringValue: " + detail::quoted(m_stringValue)
        + ", intValue: " + (m_intValue ? std::to_string(*m_intValue) : "none") + ")";
}

} // namespace orrenby
