// Loose JSON: any bytes give a value or a decoding error, an object exactly where the value is a dictionary;
// what was decoded is encoded and decoded again equal, but for whole doubles, which come back as integers.

#include "Orrenby/Utilities/JSON/AnyJSONValue.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Standard/ResultDecoding.hpp"
#include "Orrenby/Utilities/JSON/JSONObject.hpp"
#include <cmath>
#include <span>

using namespace orrenby;

namespace {

/// Nothing for what is refused. Everything else than a decoding error is a fault.
template <class T> std::optional<T> decoded(std::span<const std::byte> bytes)
{
    try {
        return JSONDecoder().decode<T>(bytes);
    } catch (const DecodingError& error) {
        requireThat(!error.description().empty());
        requireThat(error.context().codingPath.empty());
        return std::nullopt;
    }
}

/// Kinds that were decoded, and no others.
void requireKinds(const Any& value)
{
    switch (value.kind()) {
    case Any::Kind::Dictionary:
        for (const auto& [key, member] : *value.get<Dictionary>())
            requireKinds(member);
        return;
    case Any::Kind::List:
        for (const Any& element : *value.get<std::vector<Any>>())
            requireKinds(element);
        return;
    default:
        requireThat(value.kind() == Any::Kind::Text || value.kind() == Any::Kind::Bool
            || value.kind() == Any::Kind::Int || value.kind() == Any::Kind::Double);
    }
}

/// The value as it comes back: text does not tell whole doubles from integers.
Any comingBack(const Any& value)
{
    if (const auto* list = value.get<std::vector<Any>>()) {
        std::vector<Any> result;
        for (const Any& element : *list)
            result.push_back(comingBack(element));
        return result;
    }
    if (const auto* dictionary = value.get<Dictionary>()) {
        Dictionary result;
        for (const auto& [key, member] : *dictionary)
            result.set(key, comingBack(member));
        return result;
    }
    const auto* number = value.get<double>();
    const bool isInteger = number != nullptr && *number >= -0x1p63 && *number < 0x1p63
        && *number == std::trunc(*number);
    return isInteger ? Any(static_cast<std::int64_t>(*number)) : value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto value = decoded<AnyJSONValue>(bytes);
    const auto object = decoded<JSONObject>(bytes);
    requireThat(object.has_value() == (value && value->value().kind() == Any::Kind::Dictionary));
    if (object)
        requireThat(Any(object->value()) == value->value());
    if (value) {
        requireKinds(value->value());
        const auto again = JSONEncoder().encode(*value);
        requireThat(decoded<AnyJSONValue>(again) == AnyJSONValue(comingBack(value->value())));
    }
    const auto outcomes = decoded<std::vector<Result<AnyJSONValue, DecodingError>>>(bytes);
    if (value && value->value().kind() == Any::Kind::List) {
        requireThat(outcomes.has_value());
        for (const auto& outcome : *outcomes)
            requireThat(outcome.isSuccess());
    }
    return 0;
}
