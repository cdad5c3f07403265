#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Utilities/Log/Append.hpp"

namespace orrenby::inline ORRENBY_ABI {

void detail::logFailedRead()
{
    Log::_append([] { return false; }, Log::Level::critical, AnyError(std::current_exception()), Dictionary(),
        CallSite("Utilities/Streams+CurrentValueSubject", 264, "value()"));
}

} // namespace orrenby
