#pragma once

/// @file
/// What a position of an ordered set that can be changed gives.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <concepts>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Reads as the member at its position, and assigning to it is the `set` of the set.
///
/// It refers to the set; do not keep it. Not synchronised.
template <class Set> class OrderedSetPlace {
    using Element = typename Set::value_type;
    using Reference = typename Set::const_reference;

public:
    OrderedSetPlace(const OrderedSetPlace&) = delete;
    OrderedSetPlace& operator=(const OrderedSetPlace& other)
    {
        m_set.set(m_position, Element(other.get()));
        return *this;
    }
    template <std::convertible_to<Element> Value> OrderedSetPlace& operator=(Value&& value)
    {
        m_set.set(m_position, Element(std::forward<Value>(value)));
        return *this;
    }
    operator Reference() const { return get(); }
    Reference get() const { return std::as_const(m_set)[m_position]; }
    friend bool operator==(const OrderedSetPlace& place, typename Set::Key value)
    {
        return place.get() == value;
    }
    std::string description() const { return describe<Element>(get()); }
    std::string debugDescription() const { return debugDescribe<Element>(get()); }

private:
    friend Set;
    OrderedSetPlace(Set& set, typename Set::Index position)
        : m_set(set)
        , m_position(position)
    {}

    Set& m_set;
    typename Set::Index m_position;
};

} // namespace orrenby::detail
