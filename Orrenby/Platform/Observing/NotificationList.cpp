#include "Orrenby/Platform/Observing/NotificationList.hpp"

#include <algorithm>

namespace orrenby::inline ORRENBY_ABI::detail {

Ref<NotificationList> NotificationList::copy() const
{
    auto copy = std::make_shared<NotificationList>(m_key);
    copy->m_places.reserve(count() + 1);
    for (const Place& place : m_places)
        if (place.registration)
            copy->m_places.push_back(place);
    return copy;
}

Ref<NotificationRegistration> NotificationList::find(std::uint64_t number) const
{
    const auto place = placeOf(number);
    return place != m_places.end() ? place->registration : nullptr;
}

void NotificationList::remove(std::uint64_t number)
{
    const auto place = placeOf(number);
    if (place == m_places.end() || !place->registration)
        return;
    m_places[static_cast<std::size_t>(place - m_places.begin())].registration.reset();
    ++m_gaps;
    if (m_gaps * 2 > m_places.size()) {
        std::erase_if(m_places, [](const Place& candidate) { return !candidate.registration; });
        m_gaps = 0;
    }
}

std::vector<NotificationList::Place>::const_iterator NotificationList::placeOf(std::uint64_t number) const
{
    const auto place = std::lower_bound(m_places.begin(), m_places.end(), number,
        [](const Place& candidate, std::uint64_t wanted) { return candidate.number < wanted; });
    return place != m_places.end() && place->number == number ? place : m_places.end();
}

} // namespace orrenby::detail
