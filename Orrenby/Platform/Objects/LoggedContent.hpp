#pragma once

/// @file
/// How a value in an `Any` is logged. Not in the umbrella header: part of the workings of `Any`.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/AnyBox.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <optional>
#include <string>
#include <type_traits>

namespace orrenby::inline ORRENBY_ABI {

class Dictionary;
class NSError;
template <class Success, class Failure> class Result;

/// Made for a type in Loggable.hpp, which includes all that it needs. A value takes it along into an `Any`,
/// whose kind no longer tells the type.
template <class T> struct LoggableConformance;

namespace detail {

/// What the content of a box says of itself when it is logged, although its class does not derive from
/// anything for that.
class ORRENBY_EXPORT LoggedContent {
public:
    virtual std::string message() const = 0;
    /// Sets the error, if it stands for one.
    virtual void readError(std::optional<NSError>& error) const;

protected:
    ~LoggedContent();
};

template <class T> struct IsResult : std::false_type {};
template <class Success, class Failure> struct IsResult<Result<Success, Failure>> : std::true_type {};

/// Those of the library's own conformances that give no error; they need not be seen to be followed.
template <class T>
concept LoggedAsPrinted
    = isTextType<T> || StandardMap<T> || std::is_same_v<T, Dictionary> || IsResult<T>::value;

/// The conformance is the program's own. The same wherever a value of the type becomes an `Any`, as it stands
/// beside the type.
template <class T>
concept LoggedFromOutside = !LoggedAsPrinted<T> && !std::is_base_of_v<NSError, T> && requires(const T& value)
{
    LoggableConformance<T>::message(value);
    LoggableConformance<T>::error(value);
};

template <class T> const T& contentOf(const AnyBoxOf<T>& box) noexcept { return box.value; }
template <class T> const T& contentOf(const AnyObjectBoxOf<T>& box) noexcept { return *box.value; }

template <class T, class Box> class PrintedBox final : public Box, public LoggedContent {
public:
    using Box::Box;

    std::string message() const override
    {
        const auto& content = contentOf(*this);
        if constexpr (isTextType<T>)
            return describe(content);
        else
            return debugDescribe(content);
    }
};

template <class T, class Box> class ConformingBox final : public Box, public LoggedContent {
public:
    using Box::Box;

    std::string message() const override { return LoggableConformance<T>::message(contentOf(*this)); }
    void readError(std::optional<NSError>& error) const override
    {
        error = LoggableConformance<T>::error(contentOf(*this));
    }
};

template <class T, class Box> struct BoxChoice {
    using type = Box;
};
template <LoggedAsPrinted T, class Box> struct BoxChoice<T, Box> {
    using type = PrintedBox<T, Box>;
};
template <LoggedFromOutside T, class Box> struct BoxChoice<T, Box> {
    using type = ConformingBox<T, Box>;
};

/// The box for a value of a type that the library does not know.
template <class T> using BoxFor = typename BoxChoice<T, AnyBoxOf<T>>::type;
/// The box for a reference to an object of such a type.
template <class T> using ObjectBoxFor = typename BoxChoice<std::remove_cv_t<T>, AnyObjectBoxOf<T>>::type;

} // namespace detail

} // namespace orrenby
