#include "Orrenby/Platform/Store/ModelCheck.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Store/NSEntityDescription.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include <algorithm>
#include <set>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

bool isLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isName(const std::string& text)
{
    return !text.empty() && text.size() <= 200 && isLetter(text[0])
        && std::all_of(text.begin(), text.end(), [](char character) {
               return isLetter(character) || (character >= '0' && character <= '9') || character == '_';
           });
}

/// Names of tables and columns differ in more than case.
std::string withoutCase(std::string text)
{
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

void checkName(std::set<std::string>& known, const std::string& name, const std::string& place)
{
    if (!isName(name))
        throwInvalidModel(place + " has a name that is none: \"" + name + "\"");
    if (!known.insert(withoutCase(name)).second)
        throwInvalidModel(place + " stands there twice");
}

void checkEntity(const EntityOptions& entity)
{
    constexpr std::size_t maximumColumns = 1000;

    std::set<std::string> known;
    for (const auto& attribute : entity.attributes) {
        const auto place = *entity.name + "." + attribute.name;
        checkName(known, attribute.name, place);
        if (!attribute.defaultValue.isNull() && !isOfKind(attribute.defaultValue, attribute.kind))
            throwInvalidModel(place + " has a default value of another kind");
    }
    for (const auto& relationship : entity.relationships)
        checkName(known, relationship.name, *entity.name + "." + relationship.name);
    if (known.size() > maximumColumns)
        throwInvalidModel(*entity.name + " has more than 1000 attributes and relationships");
}

} // namespace

void throwInvalidModel(std::string message)
{
    throw StoreError(StoreError::Kind::InvalidModel, {.message = std::move(message)});
}

void checkEntities(std::span<const EntityOptions> entities)
{
    std::set<std::string> known;
    for (const auto& entity : entities) {
        if (!entity.name)
            throwInvalidModel("An entity has no name");
        checkName(known, *entity.name, "Entity " + *entity.name);
        if (withoutCase(*entity.name).starts_with("sqlite_"))
            throwInvalidModel("Entity " + *entity.name + " has a name that is reserved");
        checkEntity(entity);
    }
}

bool isOfKind(const Any& value, AttributeKind kind)
{
    switch (kind) {
    case AttributeKind::Int:
        return value.kind() == Any::Kind::Int;
    case AttributeKind::Double:
        return value.kind() == Any::Kind::Double;
    case AttributeKind::Bool:
        return value.kind() == Any::Kind::Bool;
    case AttributeKind::Text:
        return value.kind() == Any::Kind::Text;
    case AttributeKind::Bytes:
        return value.kind() == Any::Kind::Bytes;
    case AttributeKind::Date:
        return value.kind() == Any::Kind::Date;
    case AttributeKind::UUID:
        return value.get<UUID>() != nullptr;
    }
    return false;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
