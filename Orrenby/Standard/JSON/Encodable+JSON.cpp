#include "Orrenby/Standard/JSON/Encodable+JSON.hpp"

#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string InvalidJSONTypeError::description() const { return "invalidType"; }

namespace detail {

Dictionary dictionaryOfEncoded(const Data& data)
{
    const auto value = NSJSONSerialization::JSONObjectWithData(
        data, NSJSONSerialization::ReadingOptions::FragmentsAllowed);
    if (const auto* dictionary = value.get<Dictionary>())
        return *dictionary;
    throw InvalidJSONTypeError();
}

void failToEncode(const AnyError& error, const std::string& typeName) noexcept
{
    fatalError(
        "JSONSerialization Error: " + describe(error) + " for: " + typeName, "Standard/Encodable+JSON", 71);
}

} // namespace detail

} // namespace orrenby
