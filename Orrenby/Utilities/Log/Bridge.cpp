#include "Orrenby/Utilities/Log/Bridge.hpp"

#include "Orrenby/Utilities/Log/Append.hpp"

namespace orrenby::inline ORRENBY_ABI::Log {

void _objc_append(Level level, const Any& object, CallSite site)
{
    _append([] { return false; }, level, object, Dictionary{}, site);
}

void _objc_append(Level level, UniqueFunction<std::string()>&& closure, CallSite site)
{
    _append([] { return false; }, level, closure, Dictionary{}, site);
}

void _objc_assert(bool condition, Level level, UniqueFunction<std::string()> closure, CallSite site)
{
    _append([&] { return condition; }, level, closure, Dictionary{}, site);
}

} // namespace orrenby::Log
