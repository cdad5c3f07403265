#include "Orrenby/Foundation/Arrays.hpp"

#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

Array withoutNulls(const Array& array)
{
    Array result;
    result.reserve(array.size());
    for (const Any& element : array)
        if (!element.isNull())
            result.push_back(element);
    return result;
}

Array withoutNulls(Array&& array)
{
    Array result = std::move(array);
    std::erase_if(result, [](const Any& element) { return element.isNull(); });
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
