#include "Orrenby/Platform/Net/HTTPHeaders.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Without the program's locale, which may know other letters.
constexpr char lowercased(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool areSameName(std::string_view first, std::string_view second) noexcept
{
    const auto isSame = [](char left, char right) { return lowercased(left) == lowercased(right); };
    return std::equal(first.begin(), first.end(), second.begin(), second.end(), isSame);
}

std::size_t hashOfName(std::string_view name) noexcept
{
    std::size_t hash = 14695981039346656037U; // FNV-1a
    for (const char character : name)
        hash = (hash ^ static_cast<unsigned char>(lowercased(character))) * 1099511628211U;
    return hash;
}

} // namespace

HTTPHeaders::HTTPHeaders(std::initializer_list<Field> fields)
{
    m_fields.reserve(fields.size());
    for (const auto& field : fields)
        set(field.name, field.value);
}

const HTTPHeaders::Field* HTTPHeaders::find(std::string_view name) const noexcept
{
    const auto found = std::find_if(
        begin(), end(), [&](const Field& field) { return areSameName(field.name, name); });
    return found != end() ? found : nullptr;
}

std::optional<std::string> HTTPHeaders::value(std::string_view name) const
{
    const auto* field = find(name);
    return field != nullptr ? std::optional(field->value) : std::nullopt;
}

std::optional<std::string> HTTPHeaders::valueForExactName(std::string_view name) const
{
    const auto* field = find(name);
    return field != nullptr && field->name == name ? std::optional(field->value) : std::nullopt;
}

void HTTPHeaders::set(std::string_view name, std::string_view value)
{
    if (const auto* field = find(name))
        m_fields[static_cast<std::size_t>(field - begin())].value.assign(value);
    else
        m_fields.push_back({std::string(name), std::string(value)});
}

bool HTTPHeaders::erase(std::string_view name)
{
    const auto* field = find(name);
    if (field == nullptr)
        return false;
    m_fields.erase(m_fields.begin() + (field - begin()));
    return true;
}

std::string HTTPHeaders::description() const
{
    std::vector<std::pair<std::string, std::string>> members;
    for (const auto& [name, value] : m_fields)
        members.emplace_back(debugDescribe(name), debugDescribe(value));
    return detail::joinedDictionary(std::move(members), false);
}

std::size_t HTTPHeaders::hash() const noexcept
{
    std::size_t sum = size(); // a sum does not depend on the order
    for (const auto& [name, value] : m_fields)
        sum += (hashOfName(name) ^ std::hash<std::string>()(value)) * 0x9E3779B97F4A7C15U;
    return sum;
}

bool operator==(const HTTPHeaders& first, const HTTPHeaders& second) noexcept
{
    return first.size() == second.size()
        && std::all_of(first.begin(), first.end(), [&](const HTTPHeaders::Field& field) {
               const auto* other = second.find(field.name);
               return other != nullptr && other->value == field.value;
           });
}

} // namespace orrenby
