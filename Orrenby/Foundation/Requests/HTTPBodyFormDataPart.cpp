#include "Orrenby/Foundation/Requests/HTTPBodyFormDataPart.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string HTTPBodyFormDataPart::description() const { return mimetype + ", " + describe(data); }

} // namespace orrenby
