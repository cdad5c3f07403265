#include "Orrenby/Platform/Text/TextAttributes.hpp"

namespace orrenby::inline ORRENBY_ABI {

TextAttributes::TextAttributes(std::initializer_list<Entry> entries)
{
    if (entries.size() == 0)
        return;
    Dictionary values;
    for (const auto& [name, value] : entries)
        values.set(name, value);
    m_values = std::make_shared<const Dictionary>(std::move(values));
}

const Any* TextAttributes::find(std::string_view name) const
{
    return m_values ? m_values->find(name) : nullptr;
}

TextAttributes TextAttributes::merging(const TextAttributes& others) const
{
    if (empty())
        return others;
    if (others.empty())
        return *this;
    auto merged = values();
    for (const auto& [name, value] : others.values())
        merged.set(name, value);
    TextAttributes result;
    result.m_values = std::make_shared<const Dictionary>(std::move(merged));
    return result;
}

const Dictionary& TextAttributes::values() const noexcept
{
    static const Dictionary& none = *new Dictionary(); // outlives every static text
    return m_values ? *m_values : none;
}

bool operator==(const TextAttributes& first, const TextAttributes& second)
{
    return first.m_values == second.m_values || first.values() == second.values();
}

void TextAttributes::setAny(std::string_view name, Any value)
{
    auto changed = values();
    changed.set(name, std::move(value));
    m_values = std::make_shared<const Dictionary>(std::move(changed));
}

bool TextAttributes::eraseAny(std::string_view name)
{
    if (find(name) == nullptr)
        return false;
    auto changed = values();
    changed.erase(name);
    m_values = std::make_shared<const Dictionary>(std::move(changed));
    return true;
}

} // namespace orrenby
