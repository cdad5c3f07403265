#pragma once

/// @file
/// One value of any kind.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/AnyBox.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/LoggedContent.hpp"
#include "Orrenby/Platform/Objects/NSNull.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/StaticText.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class Dictionary;
class NSSet;

namespace detail {

template <class T>
concept AnyInteger
    = std::is_integral_v<T> && OtherThan<T, bool> && !Character<T> && (sizeof(T) <= sizeof(std::int64_t));

template <class T> struct ListElement {};
template <class T, class Allocator> struct ListElement<std::vector<T, Allocator>> {
    using type = T;
};
template <class T> struct ReferredClass {};
template <class T> struct ReferredClass<Ref<T>> {
    using type = T;
};
template <class T>
concept AnyList = std::is_object_v<typename ListElement<T>::type>;
template <class T>
concept AnyMap = StandardMap<T> && std::is_same_v<typename T::key_type, std::string>;
template <class T>
concept AnyReference = std::is_object_v<typename ReferredClass<T>::type>;
template <class T>
concept AnyOptional = OptionalLike<T> && requires(const T& value)
{
    typename T::value_type;
    std::nullopt;
    value.value();
};
template <class T, class> struct Dependent {
    using type = T;
};

} // namespace detail

/// Holds one value of any kind: what a dictionary, a log property or an error's user info maps to.
///
/// Whatever it is made from finds its kind: booleans, integers of every width (`Int`), `float`, `double`,
/// text, bytes, dates, lists (`Array` and any vector), dictionaries (`Dictionary` and any map with text
/// keys), sets, references to objects. An empty optional, an empty reference and `nullptr` are null.
/// Everything else that can be copied is `Opaque`: it is kept as it is with its C++ type. An unsigned integer
/// that does not fit in 64 signed bits is kept as an opaque `std::uint64_t`.
///
/// Kinds are strict: an integer is no `double`, a boolean no integer. The exception are numbers that were
/// read from a text, see `parsedNumber`.
///
/// @snippet Tests/Platform/Objects/AnyTests.cpp Holding any value
///
/// A value of 16 bytes. Numbers, booleans and dates are held in place; everything else is shared and never
/// changes, so that copying costs one atomic increment. A moved-from value is null. Not synchronised, but
/// copies may live in several threads.
class ORRENBY_EXPORT Any {
public:
    /// What it holds, as far as the library can tell values apart.
    enum class Kind : std::uint8_t {
        Null,
        Bool,
        Int,
        Float,
        Double,
        Date,
        Text,
        Bytes,
        List,
        Dictionary,
        Set,
        Object,
        Opaque
    };

    /// Null.
    constexpr Any() noexcept
        : m_content{.integer = 0}
    {}

    /// Keeps a copy of `value`. An object that is seen as one of its base classes would be cut: pass a
    /// reference to it instead.
    template <detail::OtherThan<Any> T>
    Any(T&& value)
        : Any()
    {
        keep<std::decay_t<T>>(std::forward<T>(value));
    }

    Any(const Any& other) noexcept
        : m_content(other.m_content)
        , m_kind(other.m_kind)
        , m_isParsed(other.m_isParsed)
    {
        if (isShared())
            m_content.box->retain();
    }
    Any(Any&& other) noexcept
        : Any()
    {
        swap(other);
    }

    /// Copies or moves first: assigning a value to itself, or to a part of it, is safe.
    Any& operator=(Any other) noexcept
    {
        swap(other);
        return *this;
    }
    ~Any()
    {
        if (isShared())
            m_content.box->release();
    }

    /// A number as it was read from a text, which does not tell integers from floating numbers: `cast` gives
    /// it as either when nothing is lost. In everything else it is what it holds.
    static Any parsedNumber(std::int64_t value);
    static Any parsedNumber(std::uint64_t value);
    static Any parsedNumber(double value);

    /// O(1), whatever the two hold.
    void swap(Any& other) noexcept
    {
        std::swap(m_content, other.m_content);
        std::swap(m_kind, other.m_kind);
        std::swap(m_isParsed, other.m_isParsed);
    }

    /// What it holds. What an optional holds is kept without the optional, so that it has the kind of that.
    Kind kind() const noexcept { return m_kind; }

    /// Whether it holds nothing.
    bool isNull() const noexcept { return m_kind == Kind::Null; }

    /// Whether it came from `parsedNumber`.
    bool isParsedNumber() const noexcept { return m_isParsed; }

    /// The content when it is exactly a `T`, else `nullptr`. Valid as long as this value or a copy of it is
    /// unchanged.
    ///
    /// Integers are kept as `std::int64_t`; ask for other widths with `cast`.
    template <class T> const T* get() const noexcept;

    /// The content as a `T`, or nothing.
    ///
    /// The type must be exact, with these freedoms: an integer is given in any width that it fits; a list as
    /// a vector and a dictionary as a map when each element casts; a reference as a reference to any class
    /// that the object has (references to constant objects stay so).
    template <class T> std::optional<T> cast() const;

    /// The object as a `T`; empty when this is no reference or the object no `T`.
    template <class T> Ref<T> object() const { return cast<Ref<T>>().value_or(nullptr); }

    /// What is held or referred to, seen as the class `T`, which may be any public base of it; else
    /// `nullptr`. Valid as long as this value or a copy of it is unchanged. Costs a `dynamic_cast`.
    template <class T> const T* view() const noexcept
    {
        static_assert(std::is_class_v<T>, "only classes can be seen as one another");
        return isShared() ? static_cast<const T*>(m_content.box->seenAs(typeid(T))) : nullptr;
    }

    /// The text without a copy; empty for every other kind.
    std::string_view text() const noexcept;

    /// Whether the content is an error (`isErrorValue`), or an object that derives from `std::exception`.
    bool isErrorValue() const noexcept { return isShared() && m_content.box->isErrorValue(); }

    /// For the log: what a `LoggableConformance` says of the content, or `nullptr`.
    const detail::LoggedContent* loggedContent() const noexcept
    {
        return isShared() ? m_content.box->loggedContent() : nullptr;
    }

    /// The C++ type of the content; `typeid(void)` for null.
    const std::type_info& type() const noexcept;

    /// The printed name of the content's type, of the most derived class for an object.
    std::string typeName() const;

    /// The printed form of the content; `<null>` for null.
    std::string description() const;
    std::string debugDescription() const;

    /// Values that are equal have the same hash. Opaque values without a hash of their own all share one.
    std::size_t hash() const;

    /// Both are of one kind and equal. References are equal when they refer to the same object; opaque values
    /// when they are of one type and compare equal, or, without an `==`, when one is a copy of the other.
    friend bool operator==(const Any& first, const Any& second) { return first.equals(second); }

private:
    union Content {
        bool boolean;
        std::int64_t integer;
        float single;
        double number;
        orrenby::Date date;
        const detail::AnyBox* box;
    };

    template <class T, class Value> void keep(Value&& value);
    void keepText(std::string text);
    void keepData(Data data);
    void keepList(std::vector<Any> list);
    void keepDictionary(Dictionary&& dictionary);
    void keepMembers(std::vector<std::pair<std::string, Any>> members);
    void keepSet(NSSet&& set);
    void keepBox(Kind kind, const detail::AnyBox* box) noexcept
    {
        m_content.box = box;
        m_kind = kind;
    }

    bool isShared() const noexcept { return m_kind >= Kind::Text; }
    bool equals(const Any& other) const;
    template <class T> static constexpr Kind kindOf();
    /// Whether it is such a number; then also which: without optionals, which cost whoever includes this
    /// header. What the signed integers hold is looked for there first.
    bool read(std::int64_t& value) const noexcept;
    bool read(std::uint64_t& value) const noexcept;
    bool read(double& value) const noexcept;
    bool read(float& value) const noexcept;

    Content m_content;
    Kind m_kind = Kind::Null;
    bool m_isParsed = false;
};

template <class T> constexpr Any::Kind Any::kindOf()
{
    if constexpr (std::is_same_v<T, bool>)
        return Kind::Bool;
    else if constexpr (std::is_same_v<T, std::int64_t>)
        return Kind::Int;
    else if constexpr (std::is_same_v<T, float>)
        return Kind::Float;
    else if constexpr (std::is_same_v<T, double>)
        return Kind::Double;
    else if constexpr (std::is_same_v<T, orrenby::Date>)
        return Kind::Date;
    else if constexpr (std::is_same_v<T, std::string>)
        return Kind::Text;
    else if constexpr (std::is_same_v<T, orrenby::Data>)
        return Kind::Bytes;
    else if constexpr (std::is_same_v<T, std::vector<Any>>)
        return Kind::List;
    else if constexpr (std::is_same_v<T, orrenby::Dictionary>)
        return Kind::Dictionary;
    else if constexpr (std::is_same_v<T, NSSet>)
        return Kind::Set;
    else if constexpr (detail::AnyReference<T>)
        return Kind::Object;
    else
        return Kind::Opaque;
}

template <class T, class Value> void Any::keep(Value&& value)
{
    constexpr Kind kind = kindOf<T>();
    if constexpr (kind == Kind::Bool) {
        m_content.boolean = value;
        m_kind = kind;
    } else if constexpr (kind == Kind::Float) {
        m_content.single = value;
        m_kind = kind;
    } else if constexpr (kind == Kind::Double) {
        m_content.number = value;
        m_kind = kind;
    } else if constexpr (kind == Kind::Date) {
        m_content.date = value;
        m_kind = kind;
    } else if constexpr (detail::AnyInteger<T>) {
        if (std::in_range<std::int64_t>(value)) {
            m_content.integer = static_cast<std::int64_t>(value);
            m_kind = Kind::Int;
        } else
            keepBox(Kind::Opaque, new detail::AnyBoxOf<std::uint64_t>(static_cast<std::uint64_t>(value)));
    } else if constexpr (std::is_same_v<T, const char*> || std::is_same_v<T, char*>) {
        if constexpr (std::is_array_v<std::remove_reference_t<Value>>)
            keepText(std::string(value));
        else if (value != nullptr)
            keepText(std::string(value));
    } else if constexpr (detail::isTextType<T>)
        keepText(std::string(std::forward<Value>(value)));
    else if constexpr (std::is_same_v<T,
                           NSNull> || std::is_same_v<T, std::nullptr_t> || std::is_same_v<T, std::nullopt_t>)
        return;
    else if constexpr (kind == Kind::Bytes)
        keepData(std::forward<Value>(value));
    else if constexpr (kind == Kind::List)
        keepList(std::forward<Value>(value));
    else if constexpr (kind == Kind::Dictionary)
        keepDictionary(T(std::forward<Value>(value)));
    else if constexpr (kind == Kind::Set)
        keepSet(T(std::forward<Value>(value)));
    else if constexpr (kind == Kind::Object) {
        if (value != nullptr)
            keepBox(kind,
                new detail::ObjectBoxFor<typename detail::ReferredClass<T>::type>(
                    std::forward<Value>(value)));
    } else if constexpr (detail::AnyOptional<T>) {
        if (value.has_value())
            *this = Any(*std::forward<Value>(value));
    } else if constexpr (detail::AnyList<T>) {
        keepList(std::vector<Any>(value.begin(), value.end()));
    } else if constexpr (detail::AnyMap<T>) {
        keepMembers(std::vector<std::pair<std::string, Any>>(value.begin(), value.end()));
    } else {
        static_assert(
            std::is_copy_constructible_v<T>, "Any keeps values that can be copied; hold objects by Ref");
        keepBox(kind, new detail::BoxFor<T>(std::forward<Value>(value)));
    }
}

template <class T> const T* Any::get() const noexcept
{
    constexpr Kind kind = kindOf<T>();
    static_assert(kind != Kind::Opaque || !detail::AnyInteger<T> || std::is_same_v<T, std::uint64_t>,
        "Integers are kept as std::int64_t: get that, or cast to another width");
    if (m_kind != kind)
        return nullptr;
    if constexpr (kind == Kind::Bool)
        return &m_content.boolean;
    else if constexpr (kind == Kind::Int)
        return &m_content.integer;
    else if constexpr (kind == Kind::Float)
        return &m_content.single;
    else if constexpr (kind == Kind::Double)
        return &m_content.number;
    else if constexpr (kind == Kind::Date)
        return &m_content.date;
    else if constexpr (kind == Kind::Object) {
        using Box = detail::AnyObjectBoxOf<typename detail::ReferredClass<T>::type>;
        return m_content.box->type() == typeid(T) ? &static_cast<const Box*>(m_content.box)->value : nullptr;
    } else if constexpr (kind == Kind::Opaque)
        return m_content.box->type() == typeid(T)
            ? &static_cast<const detail::AnyBoxOf<T>*>(m_content.box)->value
            : nullptr;
    else
        return &static_cast<const detail::AnyBoxOf<T>*>(m_content.box)->value;
}

template <class T> std::optional<T> Any::cast() const
{
    if constexpr (std::is_same_v<T, Any>)
        return *this;
    else if constexpr (std::is_same_v<T, double> || std::is_same_v<T, float>) {
        T value = 0;
        return read(value) ? std::optional<T>(value) : std::nullopt;
    } else if constexpr (detail::AnyInteger<T>) {
        std::int64_t value = 0;
        if (read(value))
            return std::in_range<T>(value) ? std::optional<T>(static_cast<T>(value)) : std::nullopt;
        if constexpr (std::is_unsigned_v<T> && sizeof(T) == sizeof(std::uint64_t)) {
            std::uint64_t large = 0;
            if (read(large))
                return static_cast<T>(large);
        }
        return std::nullopt;
    } else if constexpr (detail::AnyReference<T>) {
        using Class = typename detail::ReferredClass<T>::type;
        if (m_kind != Kind::Object)
            return std::nullopt;
        if (const auto* exact = get<T>())
            return *exact;
        const auto* box = static_cast<const detail::AnyObjectBox*>(m_content.box);
        const auto* address = static_cast<const std::remove_cv_t<Class>*>(box->seenAs(typeid(Class)));
        if (address == nullptr || (box->isConst() && !std::is_const_v<Class>))
            return std::nullopt;
        // The object was handed over as changeable unless `isConst`, so this takes away only what the box
        // added.
        return T(box->owner(), const_cast<Class*>(address));
    } else if constexpr (detail::AnyList<T> && kindOf<T>() == Kind::Opaque) {
        const auto* list = get<std::vector<Any>>();
        if (list == nullptr)
            return std::nullopt;
        T result;
        result.reserve(list->size());
        for (const Any& element : *list) {
            auto value = element.cast<typename T::value_type>();
            if (!value)
                return std::nullopt;
            result.push_back(*std::move(value));
        }
        return result;
    } else if constexpr (detail::AnyMap<T>) {
        const auto* dictionary = get<typename detail::Dependent<orrenby::Dictionary, T>::type>();
        if (dictionary == nullptr)
            return std::nullopt;
        T result;
        for (const auto& [key, member] : *dictionary) {
            auto value = member.template cast<typename T::mapped_type>();
            if (!value)
                return std::nullopt;
            result.emplace(key, *std::move(value));
        }
        return result;
    } else if constexpr (std::is_same_v<T, NSNull>)
        return isNull() ? std::optional<T>(T{}) : std::nullopt;
    else {
        const T* value = get<T>();
        return value != nullptr ? std::optional<T>(*value) : std::nullopt;
    }
}

} // namespace orrenby

template <> struct std::hash<orrenby::Any> {
    std::size_t operator()(const orrenby::Any& value) const { return value.hash(); }
};
