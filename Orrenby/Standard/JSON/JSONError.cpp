#include "Orrenby/Standard/JSON/JSONError.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI {

struct JSONError::Content {
    Kind kind;
    std::string key = {};
    Any value = {};
    Data data = {};

    friend bool operator==(const Content&, const Content&) = default;
};

JSONError::JSONError(Content content)
    : m_content(std::make_shared<const Content>(std::move(content)))
{}

JSONError JSONError::keyNotFound(std::string_view key)
{
    return JSONError(Content{.kind = Kind::KeyNotFound, .key = std::string(key)});
}

JSONError JSONError::typeMismatch(std::string_view key, Any value)
{
    return JSONError(Content{.kind = Kind::TypeMismatch, .key = std::string(key), .value = std::move(value)});
}

JSONError JSONError::transformFailed(std::string_view key, Any value)
{
    return JSONError(
        Content{.kind = Kind::TransformFailed, .key = std::string(key), .value = std::move(value)});
}

JSONError JSONError::valueIsNaN(std::string_view key, Any value)
{
    return JSONError(Content{.kind = Kind::ValueIsNaN, .key = std::string(key), .value = std::move(value)});
}

JSONError JSONError::valueIsInfinity(std::string_view key, Any value)
{
    return JSONError(
        Content{.kind = Kind::ValueIsInfinity, .key = std::string(key), .value = std::move(value)});
}

JSONError JSONError::invalidData(Data data)
{
    return JSONError(Content{.kind = Kind::InvalidData, .data = std::move(data)});
}

JSONError JSONError::failedDictionaryCast(std::string_view key)
{
    return JSONError(Content{.kind = Kind::FailedDictionaryCast, .key = std::string(key)});
}

JSONError::Kind JSONError::kind() const noexcept { return m_content->kind; }

const std::string& JSONError::key() const noexcept { return m_content->key; }

const Any& JSONError::value() const noexcept { return m_content->value; }

const Data& JSONError::data() const noexcept { return m_content->data; }

std::int64_t JSONError::code() const noexcept
{
    // A cast that failed is reported to the outside as a missing key.
    return kind() == Kind::FailedDictionaryCast ? 1 : static_cast<std::int64_t>(kind()) + 1;
}

std::string JSONError::description() const
{
    switch (kind()) {
    case Kind::TypeMismatch:
        return "Type mismatch for key: " + key() + " value: " + describe(value());
    case Kind::TransformFailed:
        return "Transform failed for key: " + key() + " value: " + describe(value());
    case Kind::ValueIsNaN:
        return "Key: " + key() + " with value " + describe(value()) + " is not a number";
    case Kind::ValueIsInfinity:
        return "Key: " + key() + " with value " + describe(value()) + " is infinite";
    case Kind::InvalidData:
        return "JSON from `Data` requires string-keyed dictionary";
    case Kind::KeyNotFound:
    case Kind::FailedDictionaryCast:
        break;
    }
    return "Key not found: " + key();
}

Dictionary JSONError::properties() const
{
    if (kind() == Kind::InvalidData)
        return {};
    Dictionary result = {{"key", key()}};
    if (hasValue())
        result.set("value", value());
    return result;
}

bool JSONError::equals(const JSONError& other) const { return *m_content == *other.m_content; }

bool JSONError::hasValue() const noexcept
{
    return kind() >= Kind::TypeMismatch && kind() <= Kind::ValueIsInfinity;
}

} // namespace orrenby
