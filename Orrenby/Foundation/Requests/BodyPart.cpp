#include "Orrenby/Foundation/Requests/BodyPart.hpp"

namespace orrenby::inline ORRENBY_ABI {

BodyPartValue::BodyPartValue(std::string_view text) noexcept
    : m_bytes(std::as_bytes(std::span(text)))
{}

BodyPartValue::BodyPartValue(const std::string& text) noexcept
    : BodyPartValue(std::string_view(text))
{}

BodyPartValue::BodyPartValue(const char* text) noexcept
    : BodyPartValue(std::string_view(text))
{}

BodyPartValue::BodyPartValue(std::span<const std::byte> data) noexcept
    : m_bytes(data)
{}

BodyPartValue::BodyPartValue(const Data& data) noexcept
    : m_bytes(data)
{}

BodyPartValue::BodyPartValue(const std::optional<std::string_view>& text) noexcept
    : BodyPartValue(text ? BodyPartValue(*text) : BodyPartValue())
{}

BodyPartValue::BodyPartValue(const std::optional<std::string>& text) noexcept
    : BodyPartValue(text ? BodyPartValue(std::string_view(*text)) : BodyPartValue())
{}

BodyPartValue::BodyPartValue(const std::optional<Data>& data) noexcept
    : BodyPartValue(data ? BodyPartValue(*data) : BodyPartValue())
{}

} // namespace orrenby
