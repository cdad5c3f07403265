#include "Orrenby/Utilities/Streams/More/Await.hpp"

namespace orrenby::inline ORRENBY_ABI::Streams {

StreamEndedError::~StreamEndedError() = default;

std::string StreamEndedError::description() const { return "The stream ended without an element"; }

std::unique_ptr<Error> StreamEndedError::clone() const { return std::make_unique<StreamEndedError>(*this); }

} // namespace orrenby::Streams
