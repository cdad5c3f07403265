#include "Orrenby/Foundation/BaseManagedObject.hpp"

namespace orrenby::inline ORRENBY_ABI {

BaseManagedObject::~BaseManagedObject() = default;

} // namespace orrenby
