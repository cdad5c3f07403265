#include "Orrenby/Utilities/JSON/JSONObject.hpp"

#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Utilities/JSON/JSONValueCoding.hpp"

namespace orrenby::inline ORRENBY_ABI {

JSONObject JSONObject::init(const Decoder& decoder)
{
    JSONDocument::Node refused = 0;
    if (auto value = detail::decodeAnyMembers(decoder.place(), refused))
        return JSONObject(*std::move(value));
    throw DecodingError::dataCorrupted(detail::contextOfRefusal(
        decoder, refused, "JSONObject can only be coded from type Dictionary<String, AnyJSONValue>."));
}

void JSONObject::encode(const Encoder& encoder) const
{
    encoder.singleValueContainer().encode(detail::HeldJSONObject{m_value});
}

} // namespace orrenby
