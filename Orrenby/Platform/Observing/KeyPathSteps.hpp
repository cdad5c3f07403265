#pragma once

/// @file
/// How a key path walks from member to member.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/Computed.hpp"
#include "Orrenby/Platform/Observing/KeyName.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

template <typename Member> struct MemberTypes;
template <typename SlotType, typename ClassType> struct MemberTypes<SlotType ClassType::*> {
    using Slot = SlotType;
    using Class = ClassType;
};

/// What stands at one step: a plain member is its own value and has no key.
template <typename Slot> struct SlotTraits {
    using Value = std::remove_cv_t<Slot>;
    static constexpr bool isWritable = !std::is_const_v<Slot>;
    static constexpr std::string_view key = {};
    static const Value& read(const Slot& slot) noexcept { return slot; }
    template <typename NewValue> static void write(Slot& slot, NewValue&& value)
    {
        slot = std::forward<NewValue>(value);
    }
};
template <typename T, KeyName Name> struct SlotTraits<Property<T, Name>> {
    using Value = T;
    static constexpr bool isWritable = true;
    static constexpr std::string_view key = keyDescription<Name>.name;
    static const T& read(const Property<T, Name>& slot) noexcept { return slot.get(); }
    static void write(Property<T, Name>& slot, T value) { slot.set(std::move(value)); }
};
template <typename T, KeyName Name> struct SlotTraits<Computed<T, Name>> {
    using Value = T;
    static constexpr bool isWritable = false;
    static constexpr std::string_view key = keyDescription<Name>.name;
    static T read(const Computed<T, Name>& slot) { return slot.get(); }
};
template <typename Slot> struct SlotTraits<const Slot> : SlotTraits<Slot> {
    static constexpr bool isWritable = false;
};

/// Where a value leads: itself for a plain value, else what it points to.
template <typename T> struct Target {
    using type = T;
    static constexpr bool isElsewhere = false;
    static constexpr bool isObservable = false;
    template <typename Value, typename Use> static bool enter(Value& value, Use&& use) { return use(value); }
};
template <typename T> struct PointedTarget {
    using type = T;
    static constexpr bool isElsewhere = true;
    static constexpr bool isObservable = false;
    template <typename Pointer, typename Use> static bool enter(const Pointer& pointer, Use&& use)
    {
        return pointer != nullptr && use(*pointer);
    }
};
template <typename T> struct Target<T*> : PointedTarget<T> {};
template <typename T, typename Deleter> struct Target<std::unique_ptr<T, Deleter>> : PointedTarget<T> {};
template <typename T> struct Target<Ref<T>> : PointedTarget<T> {
    static constexpr bool isObservable = !std::is_const_v<T>;
};
template <typename T> struct Target<std::optional<T>> : Target<T> {
    template <typename Value, typename Use> static bool enter(Value& value, Use&& use)
    {
        return value.has_value() && Target<T>::enter(*value, use);
    }
};

/// The slot of a member in a perhaps constant object.
template <typename Root, typename Member>
using SlotIn = std::conditional_t<std::is_const_v<Root>, const typename MemberTypes<Member>::Slot,
    typename MemberTypes<Member>::Slot>;

template <typename Member> using ValueOf = typename SlotTraits<typename MemberTypes<Member>::Slot>::Value;

template <typename First, typename... Rest> struct LastOf : LastOf<Rest...> {};
template <typename Last> struct LastOf<Last> {
    using type = ValueOf<Last>;
};

template <typename Root, typename First, typename... Rest> constexpr bool isWritableAlong()
{
    using Place = SlotIn<Root, First>;
    using Next = Target<ValueOf<First>>;
    if constexpr (sizeof...(Rest) == 0)
        return SlotTraits<Place>::isWritable;
    else if constexpr (Next::isElsewhere)
        return isWritableAlong<typename Next::type, Rest...>();
    else
        return SlotTraits<Place>::isWritable && isWritableAlong<typename Next::type, Rest...>();
}

/// Whether observers can follow the path: every step has a key, and every step but the last leads on to an
/// object.
template <typename First, typename... Rest> constexpr bool hasCodingString()
{
    if constexpr (SlotTraits<typename MemberTypes<First>::Slot>::key.empty())
        return false;
    else if constexpr (sizeof...(Rest) == 0)
        return true;
    else
        return Target<ValueOf<First>>::isObservable && hasCodingString<Rest...>();
}

/// The keys of a path, joined by dots.
template <typename... Members> constexpr auto makeCodingString()
{
    constexpr std::size_t size = (SlotTraits<typename MemberTypes<Members>::Slot>::key.size() + ...
        + (sizeof...(Members) - 1));
    std::array<char, size> text{};
    std::size_t end = 0;
    const auto append = [&](std::string_view key) {
        if (end != 0)
            text[end++] = '.';
        for (const char character : key)
            text[end++] = character;
    };
    (append(SlotTraits<typename MemberTypes<Members>::Slot>::key), ...);
    return text;
}
template <typename... Members> inline constexpr auto codingStringOf = makeCodingString<Members...>();

/// Hands the value at the end to `use`; false when the path is interrupted.
template <typename Root, typename Use, typename First, typename... Rest>
bool readAlong(const Root& root, const Use& use, First first, Rest... rest)
{
    const auto& slot = root.*first;
    decltype(auto) value = SlotTraits<typename MemberTypes<First>::Slot>::read(slot);
    if constexpr (sizeof...(Rest) == 0) {
        use(value);
        return true;
    } else
        return Target<ValueOf<First>>::enter(
            value, [&](const auto& next) { return readAlong(next, use, rest...); });
}

/// Puts `value` at the end; false when the path is interrupted. A value inside a property is changed by
/// setting the whole property, so that its observers are told.
template <typename Root, typename Value, typename First, typename... Rest>
bool writeAlong(Root& root, Value&& value, First first, Rest... rest)
{
    using Place = typename MemberTypes<First>::Slot;
    using Traits = SlotTraits<Place>;
    auto& slot = root.*first;
    if constexpr (sizeof...(Rest) == 0) {
        Traits::write(slot, std::forward<Value>(value));
        return true;
    } else {
        const auto writeOn = [&](auto& next) {
            return writeAlong(next, std::forward<Value>(value), rest...);
        };
        if constexpr (Target<ValueOf<First>>::isElsewhere) {
            decltype(auto) pointer = Traits::read(slot);
            return Target<ValueOf<First>>::enter(pointer, writeOn);
        } else if constexpr (std::is_same_v<Place, ValueOf<First>>)
            return Target<ValueOf<First>>::enter(slot, writeOn);
        else {
            auto copy = Traits::read(slot);
            if (!Target<ValueOf<First>>::enter(copy, writeOn))
                return false;
            Traits::write(slot, std::move(copy));
            return true;
        }
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
