#include "Orrenby/Utilities/LosslessDataConvertibleError.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

struct LosslessDataConvertibleError::Content {
    Kind kind;
    Data data;
    std::string text;

    friend bool operator==(const Content&, const Content&) = default;
};

LosslessDataConvertibleError::LosslessDataConvertibleError(Content content)
    : m_content(std::make_shared<const Content>(std::move(content)))
{}

LosslessDataConvertibleError LosslessDataConvertibleError::failedToConvertFromData(Data data)
{
    return LosslessDataConvertibleError(Content{Kind::FailedToConvertFromData, std::move(data), {}});
}

LosslessDataConvertibleError LosslessDataConvertibleError::failedToConvertFromString(std::string text)
{
    return LosslessDataConvertibleError(Content{Kind::FailedToConvertFromString, {}, std::move(text)});
}

LosslessDataConvertibleError::Kind LosslessDataConvertibleError::kind() const noexcept
{
    return m_content->kind;
}

const Data& LosslessDataConvertibleError::data() const noexcept { return m_content->data; }

const std::string& LosslessDataConvertibleError::text() const noexcept { return m_content->text; }

std::string LosslessDataConvertibleError::description() const
{
    return kind() == Kind::FailedToConvertFromData
        ? "failedToConvertFromData(" + debugDescribe(data()) + ")"
        : "failedToConvertFromString(" + debugDescribe(text()) + ")";
}

bool LosslessDataConvertibleError::equals(const LosslessDataConvertibleError& other) const
{
    return *m_content == *other.m_content;
}

} // namespace orrenby
