#include "Orrenby/Standard/JSON/JSONAccess.hpp"

#include "Orrenby/Standard/JSON/JSONError.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

void throwTypeMismatch(std::string_view key, const Any& value) { throw JSONError::typeMismatch(key, value); }

void throwTransformFailed(std::string_view key, const Any& value)
{
    throw JSONError::transformFailed(key, value);
}

const Any& requiredMember(const Dictionary& dictionary, std::string_view key)
{
    if (const Any* value = dictionary.find(key))
        return *value;
    throw JSONError::keyNotFound(key);
}

} // namespace orrenby::inline ORRENBY_ABI::detail
