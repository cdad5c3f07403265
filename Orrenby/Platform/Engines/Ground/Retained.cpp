#include "Orrenby/Platform/Engines/Ground/Retained.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

Counted::~Counted() = default;

} // namespace orrenby::detail
