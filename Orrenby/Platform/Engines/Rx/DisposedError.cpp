#include "Orrenby/Platform/Engines/Rx/DisposedError.hpp"

#include "Orrenby/Platform/Errors/NSErrorKeys.hpp"

namespace orrenby::inline ORRENBY_ABI::StreamsRx {

DisposedError::DisposedError() noexcept = default;
DisposedError::~DisposedError() = default;

std::string DisposedError::description() const { return "The subject was disposed"; }

Dictionary DisposedError::errorUserInfo() const { return {{NSLocalizedDescriptionKey, description()}}; }

} // namespace orrenby::StreamsRx
