#include "Orrenby/Utilities/JSON/AnyJSONValue.hpp"

#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Utilities/JSON/JSONValueCoding.hpp"

namespace orrenby::inline ORRENBY_ABI {

AnyJSONValue AnyJSONValue::init(const Decoder& decoder)
{
    JSONDocument::Node refused = 0;
    if (auto value = detail::decodeAny(decoder.place(), refused))
        return AnyJSONValue(*std::move(value));
    throw DecodingError::typeMismatch<AnyJSONValue>(
        detail::contextOfRefusal(decoder, refused, "Unsupported JSON type"));
}

void AnyJSONValue::encode(const Encoder& encoder) const
{
    encoder.singleValueContainer().encode(detail::HeldJSONValue{m_value});
}

std::string AnyJSONValue::debugDescription() const
{
    return "AnyJSONValue(" + m_value.debugDescription() + ")";
}

} // namespace orrenby
