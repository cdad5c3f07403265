#include "Orrenby/Platform/Engines/Rx/DisposedError.hpp"

namespace orrenby::inline ORRENBY_ABI::StreamsRx {

DisposedError::DisposedError() noexcept = default;
DisposedError::~DisposedError() = default;

std::string DisposedError::description() const { return "The subject was disposed"; }

} // namespace orrenby::StreamsRx
