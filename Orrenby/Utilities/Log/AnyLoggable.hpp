#pragma once

/// @file
/// Any value, ready to be logged.

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Utilities/Log/Loggable.hpp"
#include "Orrenby/Utilities/Log/LoggedValue.hpp"
#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

struct LoggedAccess;

/// A value of some type, kept for logging.
class ORRENBY_EXPORT LoggedBox {
public:
    virtual ~LoggedBox();
    virtual void read(LoggedValue& read) const = 0;
};

template <class T> class LoggedBoxOf final : public LoggedBox {
public:
    template <class Value>
    explicit LoggedBoxOf(Value&& value)
        : m_value(std::forward<Value>(value))
    {}

    void read(LoggedValue& read) const override { readLogged(m_value, read); }

private:
    T m_value;
};

/// Reads the value now, because it cannot be kept.
template <class T> LoggedValue readNow(const T& value)
{
    auto read = LoggedValue{.wantsMessage = true, .wantsError = true};
    readLogged(value, read);
    return read;
}

ORRENBY_EXPORT std::shared_ptr<const LoggedBox> boxOfRead(LoggedValue read);

template <class T> bool canBeKept(const T& value)
{
    if constexpr (!std::is_copy_constructible_v<T> || std::is_abstract_v<T> || std::is_array_v<T>)
        return false;
    else if constexpr (std::is_polymorphic_v<T>)
        return typeid(value) == typeid(T); // a copy of a base class would have lost its type
    else
        return true;
}

template <class T> constexpr bool isPointerToText = LoggedText<T> && !std::is_same_v<T, std::string>;

template <class Value> std::shared_ptr<const LoggedBox> boxOf(Value&& value)
{
    using T = std::remove_cvref_t<Value>;
    if constexpr (isPointerToText<T> && !std::is_same_v<T, StaticText>)
        return std::make_shared<const LoggedBoxOf<std::string>>(describe(static_cast<const T&>(value)));
    else {
        if constexpr (std::is_constructible_v<T, Value> && !std::is_abstract_v<T>)
            if (canBeKept<T>(value))
                return std::make_shared<const LoggedBoxOf<T>>(std::forward<Value>(value));
        return boxOfRead(readNow<T>(value));
    }
}

} // namespace detail

/// Adapts any value at all to `Loggable`.
///
/// Which element it holds depends on what the value is, tested in this order:
///
/// | element | taken when the value | `message()` | `error()` |
/// |---|---|---|---|
/// | `loggable` | is `Loggable`, or has a `LoggableConformance` | its own | its own |
/// | `customError` | is an error with domain, code, user information | `Log::errorMessage` | as `NSError` |
/// | `error` | is any other error value | its full printed form | as `NSError` |
/// | `unknown` | is anything else | its full printed form | none |
///
/// References are looked through, to the object's dynamic class; so are an `Any`, an `AnyError` and a
/// `std::exception_ptr`. Exceptions count by their dynamic class, which in the last two leaves out the
/// conformances. An empty reference or pointer prints as "none".
///
/// @snippet Tests/Utilities/Log/AnyLoggableTests.cpp Adapting any value
///
/// It keeps a copy of the value and asks it at each call. A value that cannot be copied whole (a class
/// without a copy, an object seen as one of its bases) is asked once, while this is made.
///
/// Copies share what they hold. One allocation. As safe to use from several threads as the value's const
/// operations are.
class ORRENBY_EXPORT AnyLoggable final : public Loggable {
public:
    /// The cases, in the order of the tests.
    enum class Element { loggable, customError, error, unknown };

    /// Adapts a value of any type, see above.
    template <class Value>
        requires(!std::same_as<std::remove_cvref_t<Value>, AnyLoggable>)
    explicit AnyLoggable(Value&& value)
        : m_box(detail::boxOf(std::forward<Value>(value)))
    {}
    AnyLoggable(const AnyLoggable&) noexcept = default;
    AnyLoggable& operator=(const AnyLoggable&) noexcept = default;
    ~AnyLoggable() override;

    /// Which row of the table the value falls under.
    Element element() const;
    std::string message() const override;
    std::optional<NSError> error() const override;

private:
    friend struct detail::LoggedAccess;

    std::shared_ptr<const detail::LoggedBox> m_box;
};

namespace detail {

/// Reads all that is wanted of an adapter at once.
struct LoggedAccess {
    static void read(const AnyLoggable& adapter, LoggedValue& read) { adapter.m_box->read(read); }
};

} // namespace detail

} // namespace orrenby
