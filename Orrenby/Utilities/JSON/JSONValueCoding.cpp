#include "Orrenby/Utilities/JSON/JSONValueCoding.hpp"

#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

namespace {

void writeValue(const Any& value, const EncodingPlace& place);

void writeMembers(const Dictionary& members, const EncodingPlace& place)
{
    place.open('{');
    bool isFirst = true;
    for (const auto& [key, member] : members) {
        encodeMapKey(std::string_view(key), place, isFirst);
        isFirst = false;
        const CodingStep step{place.path, key, -1};
        writeValue(member, place.inside(&step));
    }
    place.text().append('}');
}

void writeElements(const Array& elements, const EncodingPlace& place)
{
    place.open('[');
    CodingStep step{place.path, {}, 0};
    for (const Any& element : elements) {
        if (step.index > 0)
            place.text().append(',');
        writeValue(element, place.inside(&step));
        ++step.index;
    }
    place.text().append(']');
}

/// Recursive, which the limit of nesting that `open` keeps allows.
void writeValue(const Any& value, const EncodingPlace& place)
{
    switch (value.kind()) {
    case Any::Kind::Dictionary:
        return writeMembers(*value.get<Dictionary>(), place);
    case Any::Kind::List:
        return writeElements(*value.get<Array>(), place);
    case Any::Kind::Text:
        return encodeText(value.text(), place);
    case Any::Kind::Bool:
        return encodeAt(*value.get<bool>(), place);
    case Any::Kind::Int:
        return encodeSigned(*value.get<std::int64_t>(), place);
    case Any::Kind::Double:
        return encodeDouble(*value.get<double>(), place);
    default:
        place.throwInvalid(value,
            "AnyJSONValue does not support type " + value.typeName() + " for value " + describe(value) + ".");
    }
}

} // namespace

DecodingError::Context contextOfRefusal(
    const Decoder& decoder, JSONDocument::Node refused, std::string_view debugDescription)
{
    auto context = decoder.errorContext(debugDescription);
    if (refused != JSONDocument::absent)
        context.position = decoder.place().document().position(refused);
    return context;
}

} // namespace detail

void Encodable<detail::HeldJSONValue>::write(
    const detail::HeldJSONValue& held, const detail::EncodingPlace& place)
{
    detail::writeValue(held.value, place);
}

void Encodable<detail::HeldJSONObject>::write(
    const detail::HeldJSONObject& held, const detail::EncodingPlace& place)
{
    detail::writeMembers(held.value, place);
}

} // namespace orrenby
