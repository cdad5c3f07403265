#pragma once

/// @file
/// What an `Any` shares: one immutable value with its operations.

#include "Orrenby/Platform/Errors/IsErrorValue.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

class LoggedContent;

/// A value on the heap that is never changed, so that any number of `Any` can share it.
class ORRENBY_EXPORT AnyBox {
public:
    AnyBox() = default;
    AnyBox(const AnyBox&) = delete;
    AnyBox& operator=(const AnyBox&) = delete;
    virtual ~AnyBox();

    void retain() const noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept
    {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

    virtual const std::type_info& type() const noexcept = 0;
    /// The other box is of the same type.
    virtual bool equals(const AnyBox& other) const = 0;
    virtual std::size_t hash() const = 0;
    virtual std::string description() const = 0;
    virtual std::string debugDescription() const = 0;
    virtual std::string typeName() const = 0;
    virtual bool isErrorValue() const noexcept = 0;

    /// What is held or referred to, seen as a class of type `wanted`, or `nullptr`. Classes without virtual
    /// functions are only themselves.
    const void* seenAs(const std::type_info& wanted) const noexcept;

    /// What it says when it is logged, or `nullptr`.
    const LoggedContent* loggedContent() const noexcept;

protected:
    virtual const std::type_info& staticType() const noexcept = 0;
    virtual const void* address() const noexcept = 0;
    virtual bool isPolymorphic() const noexcept = 0;

private:
    mutable std::atomic<std::uint32_t> m_references = 1;
};

template <class T>
concept EqualsItself
    = std::convertible_to<decltype(std::declval<const T&>() == std::declval<const T&>()), bool>;

/// Whether `==` compiles for `T`. Containers promise it for every element type, so it is asked of what they
/// hold.
template <class T> constexpr bool isComparable()
{
    if constexpr (!EqualsItself<T>)
        return false;
    else if constexpr (requires { typename T::value_type; })
        return std::is_same_v<typename T::value_type, T> || isComparable<typename T::value_type>();
    else if constexpr (requires { typename T::second_type; })
        return isComparable<typename T::first_type>() && isComparable<typename T::second_type>();
    else
        return true;
}

template <class T> class AnyBoxOf : public AnyBox {
public:
    template <class... A>
    explicit AnyBoxOf(A&&... arguments)
        : value(std::forward<A>(arguments)...)
    {}

    const std::type_info& type() const noexcept override { return typeid(T); }
    bool equals(const AnyBox& other) const override
    {
        if constexpr (isComparable<T>())
            return value == static_cast<const AnyBoxOf&>(other).value;
        else
            return this == &other;
    }
    std::size_t hash() const override
    {
        if constexpr (requires { std::hash<T>{}(value); })
            return std::hash<T>{}(value);
        else
            return 0;
    }
    std::string description() const override { return describe(value); }
    std::string debugDescription() const override { return debugDescribe(value); }
    std::string typeName() const override { return orrenby::typeName(value); }
    bool isErrorValue() const noexcept override { return ErrorValue<T>; }

    const T value;

protected:
    const std::type_info& staticType() const noexcept override { return typeid(T); }
    const void* address() const noexcept override { return &value; }
    bool isPolymorphic() const noexcept override { return std::is_polymorphic_v<T>; }
};

/// A reference to an object, together with what is needed to see it as another of its classes.
class ORRENBY_EXPORT AnyObjectBox : public AnyBox {
public:
    virtual std::shared_ptr<const void> owner() const noexcept = 0;
    virtual bool isConst() const noexcept = 0;
    /// The address of the whole object, whatever class it is seen as.
    virtual const void* identity() const noexcept = 0;

    bool isErrorValue() const noexcept override { return seenAs(typeid(std::exception)) != nullptr; }
};

template <class T> class AnyObjectBoxOf : public AnyObjectBox {
public:
    explicit AnyObjectBoxOf(Ref<T> object)
        : value(std::move(object))
    {}

    const std::type_info& type() const noexcept override { return typeid(Ref<T>); }
    bool equals(const AnyBox& other) const override
    {
        return identity() == static_cast<const AnyObjectBox&>(other).identity();
    }
    std::size_t hash() const override { return std::hash<const void*>{}(identity()); }
    std::string description() const override { return describe(*value); }
    std::string debugDescription() const override { return debugDescribe(*value); }
    std::string typeName() const override { return orrenby::typeName(*value); }

    std::shared_ptr<const void> owner() const noexcept override { return value; }
    bool isConst() const noexcept override { return std::is_const_v<T>; }
    const void* identity() const noexcept override
    {
        if constexpr (std::is_polymorphic_v<T>)
            return dynamic_cast<const void*>(value.get());
        else
            return value.get();
    }

    const Ref<T> value;

protected:
    const std::type_info& staticType() const noexcept override { return typeid(T); }
    const void* address() const noexcept override { return value.get(); }
    bool isPolymorphic() const noexcept override { return std::is_polymorphic_v<T>; }
};

} // namespace orrenby::inline ORRENBY_ABI::detail
