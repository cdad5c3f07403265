#pragma once

/// @file
/// Building requests: method, header fields, signature.

#include "Orrenby/Foundation/Requests/HTTPMethod.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <concepts>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT URLRequest requestUsing(URLRequest request, HTTPMethod method);
ORRENBY_EXPORT URLRequest requestWithHeader(
    URLRequest request, std::string_view name, std::string_view value);
ORRENBY_EXPORT URLRequest signedRequest(URLRequest request, std::optional<std::string_view> token);
ORRENBY_EXPORT std::optional<std::string> authTokenOf(const URLRequest& request);
ORRENBY_EXPORT URLRequest requestWithAuthToken(URLRequest request, std::optional<std::string_view> token);

/// A map, or a list of pairs or of fields.
template <class T>
concept HeaderDictionary = requires(const T& headers)
{
    headers.begin();
    headers.end();
};

struct AddHeaders {
    template <HeaderDictionary D> URLRequest operator()(URLRequest request, const D& headers) const
    {
        for (const auto& [name, value] : headers)
            request.setHTTPHeader(name, value);
        return request;
    }
};

/// Takes headers in braces as well, which no template deduces.
struct AddingHeaders : Pipeable<AddHeaders, URLRequest> {
    using Pipeable::Pipeable;
    using Pipeable::operator();

    [[nodiscard]] auto operator()(std::initializer_list<HTTPHeaders::Field> headers) const
    {
        return (*this)(HTTPHeaders(headers));
    }
    [[nodiscard]] URLRequest operator()(
        URLRequest request, std::initializer_list<HTTPHeaders::Field> headers) const
    {
        return AddHeaders()(std::move(request), headers);
    }
};

} // namespace detail

// Each operation gives a changed copy of its request. A request that is passed as an rvalue is moved all
// along a chain, so that its body is not copied.

/// Sets the request's method, in upper case as it is sent.
///
/// @snippet Tests/Foundation/Requests/RequestHeadersTests.cpp Building a request
///
/// Safe to use from several threads.
inline constexpr auto using_ = pipeable<URLRequest>(
    [](URLRequest request, HTTPMethod method) { return detail::requestUsing(std::move(request), method); });

/// Sets one header field: name, value. See HTTPHeaders on names that differ in case. Both are written as they
/// are, without escaping: a line break in them begins a header field of its own.
///
/// @snippet Tests/Foundation/Requests/RequestHeadersTests.cpp Building a request
///
/// Safe to use from several threads.
inline constexpr auto addingHeader = pipeable<URLRequest>(
    [](URLRequest request, std::string_view name, std::string_view value) {
        return detail::requestWithHeader(std::move(request), name, value);
    });

/// Sets header fields in turn, as `addingHeader` sets one: those of a `HTTPHeaders`, of a map of texts, of a
/// list of pairs, or in braces. The order is that of the iteration; of names that differ only in case, the
/// first spelling and the last value stay.
///
/// @snippet Tests/Foundation/Requests/RequestHeadersTests.cpp Adding several header fields
///
/// Safe to use from several threads.
inline constexpr auto addingHeaders = detail::AddingHeaders(detail::AddHeaders());

/// Adds a token to the header, in two fields: `Authorization: Token token="…"` and `X-Auth-Token: …`. Without
/// a token, or with an empty one, the request stays as it is. The token is written unescaped.
///
/// @snippet Tests/Foundation/Requests/RequestHeadersTests.cpp Building a request
///
/// Safe to use from several threads.
inline constexpr auto signed_ = pipeable<URLRequest>(
    [](URLRequest request, std::optional<std::string_view> token) {
        return detail::signedRequest(std::move(request), token);
    });

/// The value of the header field "X-Auth-Token" when it is spelled exactly so, or nothing.
///
/// @snippet Tests/Foundation/Requests/RequestHeadersTests.cpp Reading the token
///
/// Safe to use from several threads.
inline constexpr auto authToken = pipeable<const URLRequest&>(
    [](const URLRequest& request) { return detail::authTokenOf(request); });

/// Sets the header field "X-Auth-Token"; removes it when there is no token. Unlike `signed_` it leaves the
/// field "Authorization" alone, and sets an empty token.
///
/// @snippet Tests/Foundation/Requests/RequestHeadersTests.cpp Reading the token
///
/// Safe to use from several threads.
inline constexpr auto settingAuthToken = pipeable<URLRequest>(
    [](URLRequest request, std::optional<std::string_view> token) {
        return detail::requestWithAuthToken(std::move(request), token);
    });

} // namespace orrenby
