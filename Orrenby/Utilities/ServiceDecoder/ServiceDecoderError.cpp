#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoderError.hpp"

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"

namespace orrenby::inline ORRENBY_ABI {

ServiceDecoderError::ServiceDecoderError(ServiceKey key)
    : m_key(std::move(key))
{}

ServiceDecoderError ServiceDecoderError::duplicateKey(ServiceKey key)
{
    return ServiceDecoderError(std::move(key));
}

std::string ServiceDecoderError::description() const { return "duplicateKey(" + m_key.stringValue + ")"; }

std::string ServiceDecoderError::debugDescription() const
{
    return fullPrintedForm(typeName<ServiceDecoderError>());
}

std::unique_ptr<Error> ServiceDecoderError::clone() const
{
    return std::make_unique<ServiceDecoderError>(*this);
}

NSError ServiceDecoderError::nsError() const
{
    return NSError(typeName<ServiceDecoderError>(), static_cast<std::int64_t>(kind()));
}

} // namespace orrenby
