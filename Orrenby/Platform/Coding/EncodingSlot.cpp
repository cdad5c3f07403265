#include "Orrenby/Platform/Coding/EncodingSession.hpp"

#include "Orrenby/Platform/Coding/JSONKeyHash.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

void EncodingSlot::become(Form form)
{
    if (m_form == form && form != Form::Single)
        return;
    if (m_form != Form::Nothing)
        fatalError("A value was encoded in two forms at once", "Platform/Encoder", 14);
    m_form = form;
    if (form != Form::Single)
        m_place.open(form == Form::Keyed ? '{' : '[');
}

EncodingPlace EncodingSlot::member(const CodingStep* step)
{
    writeKey(m_place, m_count == 0, step->key);
    recordKey(step->key);
    ++m_count;
    return m_place.inside(step);
}

EncodingPlace EncodingSlot::element(const CodingStep* step)
{
    if (m_count > 0)
        m_place.text().append(',');
    ++m_count;
    return m_place.inside(step);
}

void EncodingSlot::goBack(const Mark& mark) noexcept
{
    m_place.text().truncate(mark.size);
    m_place.target->insertions.erase(
        m_place.target->insertions.begin() + static_cast<std::ptrdiff_t>(mark.insertions),
        m_place.target->insertions.end());
    m_count = mark.count;
    m_form = mark.form;
}

void EncodingSlot::close()
{
    switch (m_form) {
    case Form::Nothing:
        m_place.open('{');
        m_place.text().append('}');
        return;
    case Form::Single:
        return;
    case Form::Unkeyed:
        m_place.text().append(']');
        return;
    case Form::Keyed:
        m_place.text().append('}');
        std::sort(m_moreKeys.begin(), m_moreKeys.end());
        if (std::adjacent_find(m_moreKeys.begin(), m_moreKeys.end()) != m_moreKeys.end())
            m_place.session->noteRepeatedKey();
        for (const auto key : m_firstKeys)
            if (std::binary_search(m_moreKeys.begin(), m_moreKeys.end(), key))
                m_place.session->noteRepeatedKey();
    }
}

void EncodingSlot::recordKey(std::string_view key)
{
    // Two keys with one hash only cost a second pass.
    const auto hash = static_cast<std::uint32_t>(jsonKeyHash(key));
    if (m_count >= fewKeys)
        return m_moreKeys.push_back(hash);
    const auto end = m_firstKeys.begin() + static_cast<std::ptrdiff_t>(m_count);
    if (std::find(m_firstKeys.begin(), end, hash) != end)
        m_place.session->noteRepeatedKey();
    m_firstKeys[m_count] = hash;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
