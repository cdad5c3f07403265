#pragma once

/// @file
/// Members that stand for the values of a stored object.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Observing/KeyName.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

template <class T> struct AttributeContent {
    using type = T;
};
template <class T> struct AttributeContent<std::optional<T>> {
    using type = T;
};

/// The place of an attribute. A class nearly always has one entity, so the place that was found last is kept
/// beside that entity's number, in one word.
template <KeyName Name> std::size_t attributePlace(const NSEntityDescription& entity)
{
    static constinit std::atomic<std::uint64_t> latest = 0;

    const auto kept = latest.load(std::memory_order_relaxed);
    if (kept >> 32 == entity.serialNumber())
        return static_cast<std::size_t>(kept & 0xFFFFFFFF);
    const auto place = entity.attributeIndex(Name.view());
    if (place == NSEntityDescription::none)
        fatalError("The entity has no such attribute", "Platform/ManagedMembers", 40);
    latest.store(std::uint64_t(entity.serialNumber()) << 32 | place, std::memory_order_relaxed);
    return place;
}

/// What members have in common. They stand in an object of their own, which they are not copied from.
class ManagedMember {
public:
    /// Of the object that it is a member of.
    explicit ManagedMember(NSManagedObject& owner) noexcept
        : m_owner(owner)
    {}
    ManagedMember(const ManagedMember&) = delete;

protected:
    ~ManagedMember() = default;

    NSManagedObject& m_owner;
};

} // namespace detail

/// An attribute of a stored object under a type: `Attribute<std::string, "name"> name{*this};`
///
/// `T` is `std::int64_t`, `double`, `bool`, `std::string`, `Data`, `Date` or `UUID`, or an optional of one of
/// them for an attribute that may be empty. Without the optional an empty attribute reads as `T()`.
///
/// @snippet Tests/Platform/Store/NSManagedObjectTests.cpp Declaring a class of stored objects
///
/// It keeps nothing itself. An entity that has no such attribute, or one of another kind, is a programming
/// error. Use from the queue of the object's context.
template <class T, KeyName Name> class Attribute : public detail::ManagedMember {
public:
    using ManagedMember::ManagedMember;

    /// What it reads as.
    using Value = T;

    /// The value as it is now.
    T get() const
    {
        using Content = typename detail::AttributeContent<T>::type;
        const Any& value = m_owner.valueAt(place());
        if (value.isNull())
            return T();
        const auto* const content = value.get<Content>();
        if (content == nullptr)
            fatalError("The attribute is of another kind", "Platform/ManagedMembers", 75);
        return *content;
    }
    operator T() const { return get(); }

    /// Observers are told of every call.
    void set(T value)
    {
        if constexpr (std::is_same_v<T, typename detail::AttributeContent<T>::type>)
            m_owner.setValueAt(place(), Any(std::move(value)));
        else
            m_owner.setValueAt(place(), value ? Any(*std::move(value)) : Any());
    }
    Attribute& operator=(T value)
    {
        set(std::move(value));
        return *this;
    }

private:
    std::size_t place() const { return detail::attributePlace<Name>(*m_owner.entity()); }
};

/// A to-one relationship of a stored object to objects of class `T`: `ToOne<Company, "employer">
/// employer{*this};`
///
/// An object of another class than `T` reads as empty. Use from the queue of the object's context.
template <class T, KeyName Name> class ToOne : public detail::ManagedMember {
public:
    using ManagedMember::ManagedMember;

    /// The object at the other end; empty when there is none, or one of another class.
    Ref<T> get() const { return std::dynamic_pointer_cast<T>(m_owner.object(Name.view())); }
    operator Ref<T>() const { return get(); }

    /// An empty reference ends the relationship. The inverse is kept in step.
    void set(const Ref<T>& object) { m_owner.setObject(Name.view(), object); }
    ToOne& operator=(const Ref<T>& object)
    {
        set(object);
        return *this;
    }
};

/// A to-many relationship of a stored object to objects of class `T`: `ToMany<Person, "staff"> staff{*this};`
///
/// Members of another class than `T` are left out. Use from the queue of the object's context.
template <class T, KeyName Name> class ToMany : public detail::ManagedMember {
public:
    using ManagedMember::ManagedMember;

    /// In the order in which they were first saved, unsaved ones last.
    std::vector<Ref<T>> get() const
    {
        std::vector<Ref<T>> result;
        for (const auto& object : m_owner.objects(Name.view()))
            if (auto member = std::dynamic_pointer_cast<T>(object))
                result.push_back(std::move(member));
        return result;
    }
    operator std::vector<Ref<T>>() const { return get(); }

    /// No effect when the object is a member already, or is none. The inverse is kept in step.
    void insert(const Ref<T>& object) { m_owner.addObject(Name.view(), object); }
    void erase(const Ref<T>& object) { m_owner.removeObject(Name.view(), object); }
};

} // namespace orrenby
