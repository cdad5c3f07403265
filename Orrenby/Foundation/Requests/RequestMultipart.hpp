#pragma once

/// @file
/// Building requests: multipart bodies.

#include "Orrenby/Foundation/Requests/BodyPart.hpp"
#include "Orrenby/Foundation/Requests/HTTPBodyFormDataPart.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT URLRequest requestWithBodyPart(URLRequest request, const BodyPart& part);
ORRENBY_EXPORT URLRequest requestWithClosedBody(URLRequest request, std::string_view boundary);

struct AddBodyPart {
    URLRequest operator()(URLRequest request, const BodyPart& part) const
    {
        return requestWithBodyPart(std::move(request), part);
    }
};

/// Takes a part in braces as well, which no template deduces.
struct AddingBodyPart : Pipeable<AddBodyPart, URLRequest> {
    using Pipeable::Pipeable;
    using Pipeable::operator();

    [[nodiscard]] auto operator()(const BodyPart& part) const
    {
        return BoundPipeable<AddBodyPart, URLRequest, BodyPart>(AddBodyPart(), part);
    }
    [[nodiscard]] URLRequest operator()(URLRequest request, const BodyPart& part) const
    {
        return requestWithBodyPart(std::move(request), part);
    }
};

// Out of line: a header that makes views of the payloads costs its users more than all else here.
struct ORRENBY_EXPORT Attach {
    URLRequest operator()(
        URLRequest request, std::span<const std::byte> data, std::string_view mimetype) const;
    URLRequest operator()(
        URLRequest request, const HTTPBodyFormDataPart& media, std::int64_t pendingMediaCount) const;
    URLRequest operator()(URLRequest request, const HTTPBodyFormDataPart& media,
        const std::vector<std::string>& photoIDs) const;
};

} // namespace detail

/// Appends one part to the request's body, or to an empty body when it has none: `addingBodyPart({.key =
/// "caption", .value = text, .boundary = boundary, .contentType = HTTPMediaType::plainText})`. Without a
/// value the request stays as it is.
///
/// A part of any type but "text/plain" gets a new random identifier as its file name. The header field
/// "Content-Type" and the closing delimiter are the caller's business.
///
/// @snippet Tests/Foundation/Requests/RequestMultipartTests.cpp Writing parts
///
/// Copies the value once. The room for the closing delimiter is reserved with the part. Safe to use from
/// several threads.
inline constexpr auto addingBodyPart = detail::AddingBodyPart(detail::AddBodyPart());

/// Appends the closing delimiter of a multipart body, or makes it the body when there is none.
///
/// @snippet Tests/Foundation/Requests/RequestMultipartTests.cpp Writing parts
///
/// Safe to use from several threads.
inline constexpr auto closingBody = pipeable<URLRequest>([](URLRequest request, std::string_view boundary) {
    return detail::requestWithClosedBody(std::move(request), boundary);
});

/// Gives the request a body that uploads a photo or a video, and the header field "Content-Type" that belongs
/// to it. A request that has a body, even an empty one, stays as it is.
///
/// - `attaching(data, mimetype)` uploads bytes.
/// - `attaching(media, pendingMediaCount)` says in a field *before* the file how many more are to come.
/// - `attaching(media, photoIDs)` lists identifiers in a field *after* the file; no identifiers, no field.
///
/// What it is depends on the type alone: one that begins with "video" makes a video whose file is called
/// `….mp4`, whatever is inside, any other a photo called `….jpg`. Boundary and file name are new random
/// identifiers. The type is written unescaped.
///
/// @snippet Tests/Foundation/Requests/UploadTests.cpp Uploading a photo
///
/// The body is allocated once, at its final size, and the payload copied into it once. With `|`, payloads are
/// also copied into the operation: move them there, or pass a `std::span`. For files too large to hold, see
/// StreamedUpload.hpp. Safe to use from several threads.
inline constexpr auto attaching = pipeable<URLRequest>(detail::Attach());

} // namespace orrenby
