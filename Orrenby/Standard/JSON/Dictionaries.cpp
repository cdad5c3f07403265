#include "Orrenby/Standard/JSON/Dictionaries.hpp"

#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Standard/JSON/JSONAccess.hpp"
#include "Orrenby/Standard/JSON/JSONError.hpp"

namespace orrenby::inline ORRENBY_ABI {

Dictionary operator+(Dictionary first, const Dictionary& second)
{
    for (const auto& [key, value] : second)
        first.set(key, value);
    return first;
}

Dictionary makeDictionary(std::span<const std::byte> data)
{
    const auto value = NSJSONSerialization::JSONObjectWithData(data);
    if (const auto* dictionary = value.get<Dictionary>())
        return *dictionary;
    throw JSONError::invalidData(Data(data.begin(), data.end()));
}

Result<Dictionary, AnyError> tryMakeDictionary(std::span<const std::byte> data)
{
    return detail::outcomeOf([&] { return makeDictionary(data); });
}

} // namespace orrenby
