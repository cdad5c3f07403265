#include "Orrenby/Foundation/SafeSetObject.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

void setPresent(AnyEntries& entries, Any object, Any key)
{
    for (auto& [entryKey, value] : entries)
        if (entryKey == key) {
            value = std::move(object);
            return;
        }
    entries.emplace_back(std::move(key), std::move(object));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
