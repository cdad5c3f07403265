#include "Orrenby/Platform/Objects/Lifetime.hpp"

namespace orrenby::inline ORRENBY_ABI {

Lifetime::~Lifetime() = default;

} // namespace orrenby
