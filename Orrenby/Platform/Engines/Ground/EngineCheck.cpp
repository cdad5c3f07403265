#include "Orrenby/Platform/Engines/Ground/EngineCheck.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

void engineMismatch() noexcept
{
    fatalError("A stream object of one engine was used with the other engine", "Platform/Engines");
}

} // namespace orrenby::detail
