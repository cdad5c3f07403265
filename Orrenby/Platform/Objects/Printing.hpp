#pragma once

/// @file
/// Values written to streams, each in its printed form.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <concepts>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// Declared to be found by lookup through a type's own namespaces, and for nothing else.
template <class T> void isOfOrrenby(const T&) noexcept;

namespace detail {

void isOfOrrenby() = delete; // ends the lookup that starts from here

/// Belongs to the library, or derives from what does: an application's other types are none of its business.
template <class T>
concept OfOrrenby = requires(const T& value)
{
    isOfOrrenby(value);
};

/// Answers `description()`, or is an enumeration with a function of that name, and is no text itself.
template <class T>
concept Printed = OfOrrenby<T> &&(
    (HasDescription<T> && !std::convertible_to<const T&, std::string_view>) || DescribedEnumeration<T>);

template <class T>
concept TextStream = requires(T& stream, std::string_view text)
{
    stream.width();
    stream << text;
};

} // namespace detail

/// Writes any value of the library that has a `description()`: `std::cout << uuid`. So do an application's
/// own classes that derive from the library's.
///
/// @snippet Tests/Platform/Objects/PrintingTests.cpp Writing to a stream
///
/// The whole is one text: the stream's width holds for it once. Needs `<ostream>` where it is used, and
/// brings none. As safe as the stream.
template <detail::TextStream Stream, detail::Printed T> Stream& operator<<(Stream& stream, const T& value)
{
    stream << std::string_view(describe(value));
    return stream;
}

// What stands in these is found as well: lookup goes through a type's own namespace, not the one around it.
namespace Log {
using orrenby::isOfOrrenby;
using orrenby::operator<<;
} // namespace Log
namespace Streams {
using orrenby::isOfOrrenby;
using orrenby::operator<<;
} // namespace Streams

} // namespace orrenby
