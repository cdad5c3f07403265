#include "Orrenby/Platform/Coding/EncodingError.hpp"

#include "Orrenby/Platform/Coding/CodingErrorParts.hpp"

namespace orrenby::inline ORRENBY_ABI {

struct EncodingError::Content {
    Any value;
    Context context;
};

EncodingError::EncodingError(Content content)
    : m_content(std::make_shared<const Content>(std::move(content)))
{}

EncodingError EncodingError::invalidValue(Any value, Context context)
{
    return EncodingError({std::move(value), std::move(context)});
}

const Any& EncodingError::value() const noexcept { return m_content->value; }

const EncodingError::Context& EncodingError::context() const noexcept { return m_content->context; }

std::string EncodingError::description() const
{
    return "invalidValue(" + value().description() + ", at " + detail::joinedPath(context().codingPath) + ": "
        + context().debugDescription + ")";
}

std::string EncodingError::errorDomain() { return "NSCocoaErrorDomain"; }

Dictionary EncodingError::errorUserInfo() const
{
    return detail::codingErrorUserInfo(
        context().codingPath, context().debugDescription, context().underlyingError);
}

} // namespace orrenby
