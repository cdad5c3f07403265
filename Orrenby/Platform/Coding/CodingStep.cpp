#include "Orrenby/Platform/Coding/CodingStep.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

std::vector<CodingKey> codingPath(const CodingStep* last)
{
    std::vector<CodingKey> path;
    for (const auto* step = last; step != nullptr; step = step->parent)
        path.push_back(step->index >= 0 ? CodingKey::place(step->index) : CodingKey(step->key));
    std::reverse(path.begin(), path.end());
    return path;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
