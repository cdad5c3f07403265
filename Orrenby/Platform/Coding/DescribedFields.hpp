#pragma once

/// @file
/// The fields of described classes. Not in the umbrella header: it includes Boost.Describe; include it where
/// it is used.

#include "Orrenby/Platform/Coding/CodableKinds.hpp"
#include "Orrenby/Platform/Coding/FieldName.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <array>
#include <boost/describe/bases.hpp>
#include <boost/describe/members.hpp>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// `m_name` as `name`, `class_` as `class`.
constexpr std::string_view describedName(std::string_view name)
{
    return withoutKeywordMark(name.starts_with("m_") && name.size() > 2 ? name.substr(2) : name);
}

/// The fields that the class itself declares, and its bases.
template <class T> class DescribedFields {
public:
    /// Calls `visit(name, field)` for each field, in the order of declaration.
    template <class Value, class Visitor> static void visit(Value& value, Visitor& visitor)
    {
        visitListed(value, visitor, Members());
    }

    /// Calls `visit(base)` for each described base, in the order of declaration.
    template <class Value, class Visitor> static void visitBases(Value& value, Visitor&& visitor)
    {
        visitListedBases(value, visitor, Bases());
    }

private:
    using Members = boost::describe::describe_members<T, boost::describe::mod_any_access>;
    using Bases = boost::describe::describe_bases<T, boost::describe::mod_any_access>;

    /// Descriptions list public members before protected and private ones; where they lie tells how they were
    /// declared.
    template <template <class...> class List, class... Member>
    static std::array<std::size_t, sizeof...(Member)> declarationOrder(const T& value, List<Member...>)
    {
        const std::array<std::uintptr_t, sizeof...(Member)> places = {
            reinterpret_cast<std::uintptr_t>(&(value.*Member::pointer))...};
        std::array<std::size_t, sizeof...(Member)> order{};
        for (std::size_t index = 0; index < order.size(); ++index) {
            auto rank = index;
            for (; rank > 0 && places[order[rank - 1]] > places[index]; --rank)
                order[rank] = order[rank - 1];
            order[rank] = index;
        }
        return order;
    }

    template <class Value, class Visitor, template <class...> class List, class... Member>
    static void visitListed(Value& value, Visitor& visitor, List<Member...> members)
    {
        if constexpr (sizeof...(Member) > 0) {
            using Visit = void (*)(Value&, Visitor&);
            static constexpr Visit visits[] = {[](Value& object, Visitor& visitField) {
                visitField(describedName(Member::name), object.*Member::pointer);
            }...};
            static const auto order = declarationOrder(value, members);
            for (const auto index : order)
                visits[index](value, visitor);
        }
    }

    template <class Value, class Visitor, template <class...> class List, class... Base>
    static void visitListedBases(Value& value, Visitor& visitor, List<Base...>)
    {
        (visitBase<typename Base::type>(value, visitor), ...);
    }

    template <class Base, class Value, class Visitor> static void visitBase(Value& value, Visitor& visitor)
    {
        if constexpr (DescribedClass<Base>) {
            if constexpr (std::is_const_v<Value>)
                visitor(static_cast<const Base&>(value));
            else
                visitor(static_cast<Base&>(value));
        }
    }
};

} // namespace orrenby::inline ORRENBY_ABI::detail
