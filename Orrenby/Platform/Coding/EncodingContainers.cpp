#include "Orrenby/Platform/Coding/KeyedEncodingContainer.hpp"
#include "Orrenby/Platform/Coding/ScalarEncoding.hpp"
#include "Orrenby/Platform/Coding/SingleValueEncodingContainer.hpp"
#include "Orrenby/Platform/Coding/UnkeyedEncodingContainer.hpp"

namespace orrenby::inline ORRENBY_ABI {

void UnkeyedEncodingContainer::encode(std::string_view text)
{
    const auto step = nextStep();
    m_slot->attempt([&] { detail::encodeText(text, m_slot->element(&step)); });
}

void UnkeyedEncodingContainer::encodeNil()
{
    const auto step = nextStep();
    m_slot->element(&step).text().append("null");
}

detail::EncodingSlot& UnkeyedEncodingContainer::detached()
{
    auto& session = *m_slot->place().session;
    return session.detach(m_slot->element(session.keep(nextStep())));
}

void SingleValueEncodingContainer::encode(std::string_view text)
{
    m_slot->attempt([&] {
        start();
        detail::encodeText(text, m_slot->place());
    });
}

namespace detail {

void encodeMemberText(EncodingSlot& slot, std::string_view key, std::string_view text)
{
    const CodingStep step{slot.place().path, key, -1};
    slot.attempt([&] { encodeText(text, slot.member(&step)); });
}

void encodeMemberNull(EncodingSlot& slot, std::string_view key)
{
    const CodingStep step{slot.place().path, key, -1};
    slot.member(&step).text().append("null");
}

EncodingSlot& detachedMember(EncodingSlot& slot, std::string_view key)
{
    auto& session = *slot.place().session;
    return session.detach(slot.member(session.keep({slot.place().path, key, -1})));
}

} // namespace detail

} // namespace orrenby
