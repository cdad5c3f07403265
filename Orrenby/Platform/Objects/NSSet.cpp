#include "Orrenby/Platform/Objects/NSSet.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"

namespace orrenby::inline ORRENBY_ABI {

NSSet::NSSet(std::initializer_list<Any> objects)
    : DistinctList(objects.begin(), objects.end())
{}

NSSet::NSSet(const Array& objects)
    : DistinctList(objects.data(), objects.data() + objects.size())
{}

std::string NSSet::description() const
{
    std::vector<std::string> items;
    items.reserve(size());
    for (const Any& object : *this)
        items.push_back(debugDescribe(object));
    return detail::joinedSet(std::move(items));
}

} // namespace orrenby
