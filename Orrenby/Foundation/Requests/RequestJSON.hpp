#pragma once

/// @file
/// Building requests: bodies of JSON.

#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT URLRequest requestEncoding(URLRequest request, const Dictionary& json);
ORRENBY_EXPORT void setJSONBody(URLRequest& request, Data body);
ORRENBY_EXPORT void reportUnencodableObject();

struct EncodeJSON {
    URLRequest operator()(URLRequest request, const Dictionary& json) const
    {
        return requestEncoding(std::move(request), json);
    }

    template <class T>
    URLRequest operator()(
        URLRequest request, const T& object, JSONEncoder::DateEncodingStrategy dateEncodingStrategy) const
    {
        if (request.httpBody())
            return request;
        JSONEncoder encoder;
        encoder.setDateEncodingStrategy(std::move(dateEncodingStrategy));
        try {
            setJSONBody(request, encoder.encode(object));
        } catch (...) { // also whatever the type's own encoding throws
            reportUnencodableObject();
        }
        return request;
    }
};

/// Takes a dictionary in braces as well, which no template deduces.
struct Encoding : Pipeable<EncodeJSON, URLRequest> {
    using Pipeable::Pipeable;
    using Pipeable::operator();

    [[nodiscard]] auto operator()(Dictionary json) const
    {
        return BoundPipeable<EncodeJSON, URLRequest, Dictionary>(EncodeJSON(), std::move(json));
    }
    [[nodiscard]] URLRequest operator()(URLRequest request, const Dictionary& json) const
    {
        return requestEncoding(std::move(request), json);
    }
};

} // namespace detail

/// Gives the request a body of JSON and the header field "Content-Type: application/json".
///
/// - `encoding(json)` writes a dictionary from texts to values that JSON can hold.
/// - `encoding(object, dateEncodingStrategy)` writes any encodable value.
///
/// A request that has a body, even an empty one, stays as it is. So does one whose value cannot be written,
/// with one entry in `Log` at level `error`; nothing is thrown.
///
/// @snippet Tests/Foundation/Requests/RequestJSONTests.cpp Encoding a body
///
/// With `|`, the value is copied into the operation first; the direct call only reads it. Safe to use from
/// several threads.
inline constexpr auto encoding = detail::Encoding(detail::EncodeJSON());

} // namespace orrenby
