#pragma once

/// @file
/// What a value says when it is logged.

#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include "Orrenby/Utilities/Log/ErrorMessage.hpp"
#include <concepts>
#include <optional>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

/// Interface of values that decide what a log entry says about them.
///
/// Everything can be logged without it: `AnyLoggable` finds a text for any value. A type derives from it to
/// choose its text or to stand for a failure; a type that cannot derive gets a `LoggableConformance`.
///
/// @snippet Tests/Utilities/Log/LoggableTests.cpp Choosing what is logged
///
/// Not synchronised.
class ORRENBY_EXPORT Loggable {
public:
    virtual ~Loggable();

    /// One line. By default the full printed form: of an error its `debugDescription()`, of anything else the
    /// printed name of the dynamic type. A type with a description of its own derives from `PrintedLoggable`
    /// instead.
    virtual std::string message() const;

    /// The failure that the value stands for. By default none.
    virtual std::optional<NSError> error() const;

protected:
    Loggable() noexcept = default;
    Loggable(const Loggable&) noexcept = default;
    Loggable& operator=(const Loggable&) noexcept = default;
};

/// A `Loggable` whose message is `debugDescribe` of the `Derived` that it is.
template <class Derived> class PrintedLoggable : public Loggable {
public:
    std::string message() const override { return debugDescribe(static_cast<const Derived&>(*this)); }

protected:
    PrintedLoggable() noexcept = default;
};

namespace detail {

template <class T>
concept LoggedText = isTextType<T>;

template <class T>
concept LoggedDictionary = std::same_as<T, Dictionary> || StandardMap<T>;

} // namespace detail

/// Customisation point for types that cannot derive from `Loggable`: a specialisation has
/// `static std::string message(const T&)` and `static std::optional<NSError> error(const T&)`.
///
/// It stands in the header of its type: a value takes it along into an `Any`, so it has to be seen wherever
/// one is made of the type. An `AnyError` does not take it along.
///
/// The library has it for text, `StaticText`, `NSError`, `Result` and dictionaries.
template <class T> struct LoggableConformance;

template <detail::LoggedText T> struct LoggableConformance<T> {
    /// The text itself, and no error.
    static std::string message(const T& text) { return describe(text); }
    static std::optional<NSError> error(const T&) { return std::nullopt; }
};

template <std::derived_from<NSError> T> struct LoggableConformance<T> {
    /// What `Log::errorMessage` says, and the error.
    static std::string message(const NSError& error) { return Log::errorMessage(error); }
    static std::optional<NSError> error(const NSError& error) { return error; }
};

template <class Success, class Failure> struct LoggableConformance<Result<Success, Failure>> {
    /// The outcome in its debug form, and no error: a failure that is to be one is logged itself.
    static std::string message(const Result<Success, Failure>& result) { return debugDescribe(result); }
    static std::optional<NSError> error(const Result<Success, Failure>&) { return std::nullopt; }
};

template <detail::LoggedDictionary T> struct LoggableConformance<T> {
    /// The dictionary in its debug form, and no error.
    static std::string message(const T& dictionary) { return debugDescribe(dictionary); }
    static std::optional<NSError> error(const T&) { return std::nullopt; }
};

namespace detail {

template <class T>
concept CustomisedLoggable = requires(const T& value)
{
    LoggableConformance<T>::message(value);
    LoggableConformance<T>::error(value);
};

} // namespace detail

} // namespace orrenby
