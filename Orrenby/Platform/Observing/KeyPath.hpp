#pragma once

/// @file
/// Paths from an object to a value, as values.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/KeyPathForms.hpp"
#include "Orrenby/Platform/Observing/KeyPathTypes.hpp"
#include <concepts>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

template <typename Member>
concept DataMember = std::is_member_object_pointer_v<Member>;
template <typename Getter, typename Root>
concept GetterOf = std::invocable<const Getter&, const Root&>;
template <typename Getter, typename Root>
using GottenFrom = std::remove_cvref_t<std::invoke_result_t<const Getter&, const Root&>>;

} // namespace detail

/// Leads from an object of class `Root` to a `Value`, through any number of members. Made by `keyPath` and
/// `optionalKeyPath`.
///
/// @snippet Tests/Platform/Observing/KeyPathTests.cpp Walking along a key path
///
/// A small value; copies share what they are made of. Safe to use from several threads, as far as the objects
/// are.
template <typename Root, typename Value> class KeyPath {
public:
    explicit KeyPath(Ref<const detail::KeyPathForm<Root, Value>> form) noexcept
        : m_form(std::move(form))
    {}

    /// The value. A path that is interrupted by an empty reference is a programming error; where that can
    /// happen use `tryGet`, or `optionalKeyPath`.
    Value get(const Root& root) const
    {
        auto value = m_form->get(root);
        if (!value)
            fatalError("The key path leads through an empty reference", "Platform/KeyPath", 41);
        return *std::move(value);
    }

    /// The value, or nothing when a reference along the path is empty.
    std::optional<Value> tryGet(const Root& root) const { return m_form->get(root); }

    /// The keys along the path joined by dots, by which objects can be asked for the value and observed:
    /// `root.valueForKeyPath(*path.codingString())`. Only paths of `Property` and `Computed` members that
    /// were named as template arguments have one.
    std::optional<std::string_view> codingString() const noexcept { return m_form->codingString(); }

    /// Paths with a coding string are equal when it is the same, others when they are copies of one path.
    friend bool operator==(const KeyPath& first, const KeyPath& second) noexcept
    {
        const auto text = first.codingString();
        return text ? text == second.codingString() : first.m_form == second.m_form;
    }

protected:
    Ref<const detail::KeyPathForm<Root, Value>> m_form;
};

/// A key path whose value can be set.
template <typename Root, typename Value> class WritableKeyPath : public KeyPath<Root, Value> {
public:
    explicit WritableKeyPath(Ref<const detail::WritableKeyPathForm<Root, Value>> form) noexcept
        : KeyPath<Root, Value>(std::move(form))
    {}

    /// Sets the value; observers of properties are told. A value inside a property of a plain type is changed
    /// by setting the whole property.
    ///
    /// @returns Whether there was a place for it: false when a reference along the path is empty.
    bool set(Root& root, Value value) const
    {
        return static_cast<const detail::WritableKeyPathForm<Root, Value>&>(*this->m_form)
            .set(root, std::move(value));
    }
};

/// The path along members that are named as template arguments: `keyPath<&Person::address,
/// &Address::city>()`.
///
/// Each belongs to what the one before leads to: to the value itself, or to the object behind a reference, a
/// pointer, an optional. The path is writable when its last member is; it has a coding string when every
/// member is a `Property` or a `Computed`. Inherited members give a path that starts at the base class. No
/// allocation.
template <auto First, auto... Rest>
    requires detail::DataMember<decltype(First)>
auto keyPath() noexcept { return detail::namedKeyPath<false, First, Rest...>(); }

/// The same path, but where a reference along it is empty the value is an empty optional. Not writable.
template <auto First, auto... Rest>
    requires detail::DataMember<decltype(First)>
auto optionalKeyPath() noexcept { return detail::namedKeyPath<true, First, Rest...>(); }

/// The path along members that are passed as values: `keyPath(&Person::address, &Address::city)`. It never
/// has a coding string.
template <detail::DataMember First, detail::DataMember... Rest> auto keyPath(First first, Rest... rest)
{
    return detail::madeKeyPath<false>(first, rest...);
}

/// A path that calls `getter` with the object, as `std::invoke` does: a function, a lambda, a member
/// function. It has no coding string.
template <typename Root, detail::GetterOf<Root> Getter> auto keyPath(Getter getter)
{
    using Value = detail::GottenFrom<Getter, Root>;
    using Form = detail::GetterForm<Root, Value, Getter>;
    return KeyPath<Root, Value>(std::make_shared<const Form>(std::move(getter)));
}

/// A path that calls `getter` with the object to read, and `setter` with the object and the value to write.
template <typename Root, detail::GetterOf<Root> Getter, typename Setter>
auto keyPath(Getter getter, Setter setter)
{
    using Value = detail::GottenFrom<Getter, Root>;
    using Form = detail::AccessorForm<Root, Value, Getter, Setter>;
    static_assert(std::invocable<const Setter&, Root&, Value>, "the setter takes the object and the value");
    return WritableKeyPath<Root, Value>(std::make_shared<const Form>(std::move(getter), std::move(setter)));
}

} // namespace orrenby
