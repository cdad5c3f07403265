#pragma once

/// @file
/// The methods of HTTP that requests use.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/RawRepresentable.hpp"
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

/// One of six methods: `HTTPMethod::get` to `HTTPMethod::head`.
///
/// Each stands for a text in lower case; what is sent is in upper case. Methods compare and can be switched
/// over. One that was made without a value is `get`.
///
/// @snippet Tests/Foundation/Requests/HTTPMethodTests.cpp Reading a method
///
/// A plain value of one word. Not synchronised.
class HTTPMethod {
public:
    /// The six, for `switch`.
    enum Case : int { get, post, put, delete_, patch, head };
    using RawValue = std::string;

    /// One of the six; `get` without any.
    constexpr HTTPMethod(Case value = get) noexcept
        : m_case(value)
    {}

    /// The method with a raw value; nothing for any other text, "GET" included.
    ORRENBY_EXPORT static std::optional<HTTPMethod> make(std::string_view rawValue) noexcept;

    /// For comparing and for `switch`.
    constexpr operator Case() const noexcept { return m_case; }

    /// "get", "post", "put", "delete", "patch" or "head".
    ORRENBY_EXPORT std::string rawValue() const;

    /// As it is sent: "GET" and so on.
    ORRENBY_EXPORT std::string httpText() const;

    /// The raw value.
    std::string description() const { return rawValue(); }

private:
    Case m_case;
};

/// In the order of their declaration.
template <>
inline constexpr std::array allCases<HTTPMethod> = {HTTPMethod(HTTPMethod::get), HTTPMethod(HTTPMethod::post),
    HTTPMethod(HTTPMethod::put), HTTPMethod(HTTPMethod::delete_), HTTPMethod(HTTPMethod::patch),
    HTTPMethod(HTTPMethod::head)};

} // namespace orrenby

template <> struct std::hash<orrenby::HTTPMethod> {
    std::size_t operator()(orrenby::HTTPMethod value) const noexcept
    {
        return std::hash<int>()(static_cast<orrenby::HTTPMethod::Case>(value));
    }
};
