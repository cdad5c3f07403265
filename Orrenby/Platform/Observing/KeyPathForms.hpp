#pragma once

/// @file
/// What key paths are made of.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Invoke.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Observing/KeyPathSteps.hpp"
#include "Orrenby/Platform/Observing/KeyPathTypes.hpp"
#include <memory>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What copies of a key path share.
template <typename RootType, typename ValueType> class KeyPathForm {
public:
    using Root = RootType;
    using Value = ValueType;

    KeyPathForm(const KeyPathForm&) = delete;
    KeyPathForm& operator=(const KeyPathForm&) = delete;

    /// Nothing when the path is interrupted.
    virtual std::optional<Value> get(const Root& root) const = 0;
    virtual std::optional<std::string_view> codingString() const noexcept { return std::nullopt; }

protected:
    constexpr KeyPathForm() noexcept = default;
    // Forms of paths that are known at compile time are never destroyed; the others know their own class.
    ~KeyPathForm() = default;
};

template <typename RootType, typename ValueType>
class WritableKeyPathForm : public KeyPathForm<RootType, ValueType> {
public:
    virtual bool set(RootType& root, ValueType value) const = 0;

protected:
    constexpr WritableKeyPathForm() noexcept = default;
    ~WritableKeyPathForm() = default;
};

template <typename First, typename... Rest> struct ClassOf {
    using type = typename MemberTypes<First>::Class;
};
template <typename... Members> using RootOf = typename ClassOf<Members...>::type;
template <typename... Members> using EndOf = typename LastOf<Members...>::type;

template <typename T> struct OptionalOf {
    using type = std::optional<T>;
};
template <typename T> struct OptionalOf<std::optional<T>> {
    using type = std::optional<T>;
};

/// A path along members. `isNamed` says that they were template arguments.
///
/// @tparam Base  The form to fill in; its value is an optional when an interrupted path has an empty value.
template <typename Base, bool isNamed, bool isOptional, typename... Members> class MemberForm : public Base {
public:
    using Value = typename Base::Value;

    constexpr explicit MemberForm(Members... members) noexcept
        : m_members(members...)
    {}

    std::optional<Value> get(const typename Base::Root& root) const override
    {
        std::optional<Value> result;
        const auto keep = [&](const auto& value) { result.emplace(value); };
        std::apply([&](auto... members) { return readAlong(root, keep, members...); }, m_members);
        if constexpr (isOptional)
            if (!result)
                result.emplace();
        return result;
    }

    std::optional<std::string_view> codingString() const noexcept override
    {
        if constexpr (isNamed && hasCodingString<Members...>()) {
            constexpr const auto& text = codingStringOf<Members...>;
            return std::string_view(text.data(), text.size());
        } else
            return std::nullopt;
    }

protected:
    std::tuple<Members...> m_members;
};

template <typename Value, bool isNamed, bool isOptional, typename... Members>
class ReadableMemberForm final
    : public MemberForm<KeyPathForm<RootOf<Members...>, Value>, isNamed, isOptional, Members...> {
public:
    using MemberForm<KeyPathForm<RootOf<Members...>, Value>, isNamed, isOptional, Members...>::MemberForm;
};

template <bool isNamed, typename... Members>
class WritableMemberForm final : public MemberForm<WritableKeyPathForm<RootOf<Members...>, EndOf<Members...>>,
                                     isNamed, false, Members...> {
    using Form
        = MemberForm<WritableKeyPathForm<RootOf<Members...>, EndOf<Members...>>, isNamed, false, Members...>;

public:
    using Form::Form;

    bool set(RootOf<Members...>& root, EndOf<Members...> value) const override
    {
        return std::apply(
            [&](auto... members) { return writeAlong(root, std::move(value), members...); }, this->m_members);
    }
};

/// The form of a path along members, with the kind of path that it makes.
template <bool isNamed, bool isOptional, typename... Members> struct FormAlong {
    using Root = RootOf<Members...>;
    using Value = typename OptionalOf<EndOf<Members...>>::type;
    using Path = KeyPath<Root, Value>;
    using Form = ReadableMemberForm<Value, isNamed, true, Members...>;
};
template <bool isNamed, typename... Members>
    requires(isWritableAlong<RootOf<Members...>, Members...>())
struct FormAlong<isNamed, false, Members...> {
    using Path = WritableKeyPath<RootOf<Members...>, EndOf<Members...>>;
    using Form = WritableMemberForm<isNamed, Members...>;
};
template <bool isNamed, typename... Members>
    requires(!isWritableAlong<RootOf<Members...>, Members...>())
struct FormAlong<isNamed, false, Members...> {
    using Path = KeyPath<RootOf<Members...>, EndOf<Members...>>;
    using Form = ReadableMemberForm<EndOf<Members...>, isNamed, false, Members...>;
};

/// One for each path that is known at compile time.
template <bool isOptional, auto... members>
inline constinit const typename FormAlong<true, isOptional, decltype(members)...>::Form namedForm(members...);

template <bool isOptional, auto... members> auto namedKeyPath() noexcept
{
    using Along = FormAlong<true, isOptional, decltype(members)...>;
    // Refers to the one form without counting.
    return typename Along::Path(
        Ref<const typename Along::Form>(Ref<const void>(), &namedForm<isOptional, members...>));
}

template <bool isOptional, typename... Members> auto madeKeyPath(Members... members)
{
    using Along = FormAlong<false, isOptional, Members...>;
    return typename Along::Path(std::make_shared<const typename Along::Form>(members...));
}

/// A path through a function.
template <typename Root, typename Value, typename Getter>
class GetterForm final : public KeyPathForm<Root, Value> {
public:
    explicit GetterForm(Getter getter)
        : m_getter(std::move(getter))
    {}
    std::optional<Value> get(const Root& root) const override
    {
        return std::optional<Value>(std::in_place, detail::invoke(m_getter, root));
    }

private:
    Getter m_getter;
};

template <typename Root, typename Value, typename Getter, typename Setter>
class AccessorForm final : public WritableKeyPathForm<Root, Value> {
public:
    AccessorForm(Getter getter, Setter setter)
        : m_getter(std::move(getter))
        , m_setter(std::move(setter))
    {}
    std::optional<Value> get(const Root& root) const override
    {
        return std::optional<Value>(std::in_place, detail::invoke(m_getter, root));
    }
    bool set(Root& root, Value value) const override
    {
        detail::invoke(m_setter, root, std::move(value));
        return true;
    }

private:
    Getter m_getter;
    Setter m_setter;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
