#include "Orrenby/Utilities/Discover/AbstractOperation.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"

namespace orrenby::inline ORRENBY_ABI {

void detail::abstractOperation(int line) noexcept
{
    fatalError("Method in abstract base class must be overridden", "Utilities/Discover", line);
}

void detail::emptyPlugin() noexcept
{
    fatalError("Empty reference in place of a plugin", "Utilities/Discover");
}

void detail::emptyComponentFactory() noexcept
{
    fatalError("Empty callable in place of a component factory", "Utilities/Discover");
}

} // namespace orrenby
