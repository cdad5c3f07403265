#include "Orrenby/Standard/JSON/JSONSerializable.hpp"

#include "Orrenby/Standard/JSON/ReflectedValue.hpp"

namespace orrenby::inline ORRENBY_ABI {

JSONSerializableObject::~JSONSerializableObject() = default;

namespace detail {

bool isExcludedFromJSON(const Any& value) { return value.view<JSONSerializationExclusion>() != nullptr; }

namespace {

/// Looking for a class costs a search; only these two kinds can have one that matters.
bool isOfSomeClass(const Any& value)
{
    return value.kind() == Any::Kind::Object || value.kind() == Any::Kind::Opaque;
}

/// The dictionaries of a list of objects, or nothing when one of the elements is something else.
std::optional<Any> dictionariesOf(const Array& list)
{
    Array result;
    for (const auto& element : list) {
        const auto* object = isOfSomeClass(element) ? element.view<JSONSerializableObject>() : nullptr;
        if (object == nullptr)
            return std::nullopt;
        result.emplace_back(object->json());
    }
    return Any(std::move(result));
}

} // namespace

std::optional<Any> reflectedAny(const Any& value)
{
    if (value.isNull() || (isOfSomeClass(value) && isExcludedFromJSON(value)))
        return std::nullopt;
    if (isOfSomeClass(value))
        if (const auto* object = value.view<JSONSerializableObject>())
            return Any(object->json());
    if (const auto* list = value.get<Array>(); list != nullptr)
        if (auto dictionaries = dictionariesOf(*list))
            return dictionaries;
    return value;
}

} // namespace detail

} // namespace orrenby
