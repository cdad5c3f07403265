#include "Orrenby/Platform/Coding/DecodingError.hpp"

#include "Orrenby/Platform/Coding/CodingErrorParts.hpp"

namespace orrenby::inline ORRENBY_ABI {

struct DecodingError::Content {
    Kind kind;
    std::string typeName;
    std::optional<CodingKey> key;
    Context context;
};

DecodingError::DecodingError(Content content)
    : m_content(std::make_shared<const Content>(std::move(content)))
{}

DecodingError DecodingError::typeMismatch(std::string_view typeName, Context context)
{
    return DecodingError({Kind::TypeMismatch, std::string(typeName), std::nullopt, std::move(context)});
}

DecodingError DecodingError::valueNotFound(std::string_view typeName, Context context)
{
    return DecodingError({Kind::ValueNotFound, std::string(typeName), std::nullopt, std::move(context)});
}

DecodingError DecodingError::keyNotFound(CodingKey key, Context context)
{
    return DecodingError({Kind::KeyNotFound, {}, std::move(key), std::move(context)});
}

DecodingError DecodingError::dataCorrupted(Context context)
{
    return DecodingError({Kind::DataCorrupted, {}, std::nullopt, std::move(context)});
}

DecodingError::Kind DecodingError::kind() const noexcept { return m_content->kind; }

const std::string& DecodingError::typeName() const noexcept { return m_content->typeName; }

const std::optional<CodingKey>& DecodingError::key() const noexcept { return m_content->key; }

const DecodingError::Context& DecodingError::context() const noexcept { return m_content->context; }

std::string DecodingError::description() const
{
    constexpr std::string_view names[] = {"typeMismatch", "valueNotFound", "keyNotFound", "dataCorrupted"};
    auto result = std::string(names[static_cast<std::size_t>(kind())]) + "(";
    if (kind() == Kind::KeyNotFound)
        result += key()->description() + ", ";
    else if (kind() != Kind::DataCorrupted)
        result += typeName() + ", ";
    result += "at " + detail::joinedPath(context().codingPath);
    if (context().position)
        result += ", " + context().position->description();
    return result + ": " + context().debugDescription + ")";
}

std::string DecodingError::errorDomain() { return "NSCocoaErrorDomain"; }

std::int64_t DecodingError::errorCode() const
{
    constexpr std::int64_t readCorrupt = 4864;
    constexpr std::int64_t valueNotFound = 4865;
    return kind() == Kind::ValueNotFound || kind() == Kind::KeyNotFound ? valueNotFound : readCorrupt;
}

Dictionary DecodingError::errorUserInfo() const
{
    return detail::codingErrorUserInfo(
        context().codingPath, context().debugDescription, context().underlyingError);
}

} // namespace orrenby
