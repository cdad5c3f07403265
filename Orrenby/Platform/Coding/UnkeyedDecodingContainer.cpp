#include "Orrenby/Platform/Coding/UnkeyedDecodingContainer.hpp"

namespace orrenby::inline ORRENBY_ABI {

UnkeyedDecodingContainer::UnkeyedDecodingContainer(const detail::DecodingPlace& place)
    : m_place(place)
    , m_next(place.node + 1)
{
    if (place.kind() != JSONKind::List)
        place.throwMismatch("Array<Any>");
}

std::size_t UnkeyedDecodingContainer::count() const
{
    if (!m_count)
        m_count = m_place.document().count(m_place.node);
    return *m_count;
}

bool UnkeyedDecodingContainer::decodeNil()
{
    if (isAtEnd())
        throwAtEnd("Any");
    if (kind() != JSONKind::Null)
        return false;
    advance();
    return true;
}

UnkeyedDecodingContainer UnkeyedDecodingContainer::nestedUnkeyedContainer()
{
    UnkeyedDecodingContainer container(nextPlace("Array<Any>"));
    advance();
    return container;
}

Decoder UnkeyedDecodingContainer::superDecoder()
{
    const Decoder decoder(nextPlace("Decoder"));
    advance();
    return decoder;
}

void UnkeyedDecodingContainer::throwAtEnd(std::string_view typeName) const
{
    const auto step = currentStep();
    throw DecodingError::valueNotFound(typeName,
        detail::DecodingPlace{m_place.session, JSONDocument::absent, &step}.context(
            "Expected " + std::string(typeName) + " but the list has ended"));
}

detail::DecodingPlace UnkeyedDecodingContainer::nextPlace(std::string_view typeName) const
{
    if (isAtEnd())
        throwAtEnd(typeName);
    return {m_place.session, m_next, m_place.session->keep(currentStep())};
}

} // namespace orrenby
