#include "Orrenby/Platform/Objects/NSOrderedSet.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"

namespace orrenby::inline ORRENBY_ABI {

NSOrderedSet::NSOrderedSet(std::initializer_list<Any> objects)
    : DistinctList(objects.begin(), objects.end())
{}

NSOrderedSet::NSOrderedSet(const Array& objects)
    : DistinctList(objects.data(), objects.data() + objects.size())
{}

const Any& NSOrderedSet::operator[](std::size_t position) const
{
    if (position >= size())
        fatalError("Position out of range", "Platform/NSOrderedSet", 20);
    return objects()[position];
}

std::string NSOrderedSet::description() const { return describe(objects()); }

} // namespace orrenby
