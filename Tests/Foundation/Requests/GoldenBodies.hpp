#pragma once

/// @file
/// Requests of every form that writes a body, whose bytes stand in the folder Golden.

#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace orrenby::tests {

/// Every byte, and then what a careless reader takes for the end of the part.
inline Data awkwardBytes()
{
    Data bytes(256);
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<std::byte>(index);
    for (const char character : std::string_view("\r\n--Boundary-00000000-00\r\n\r\n\0", 29))
        bytes.push_back(static_cast<std::byte>(character));
    return bytes;
}

struct GoldenBody {
    std::string_view name; ///< Of the file.
    URLRequest request;
};

/// Each of them with identifiers counted from 1.
inline std::vector<GoldenBody> goldenBodies()
{
    const auto photo = HTTPBodyFormDataPart{.data = awkwardBytes(), .mimetype = "image/jpeg"};
    const auto video = HTTPBodyFormDataPart{.data = dataFromText("moov"), .mimetype = "video/mp4"};
    std::vector<GoldenBody> bodies;
    const auto add = [&](std::string_view name, auto build) {
        const CountedNames names;
        bodies.push_back({name, build(reportRequest() | using_(HTTPMethod::post))});
    };

    add("text-part", [](URLRequest request) {
        return addingBodyPart(std::move(request),
            {.key = "caption",
                .value = "Wind über Höhe 7\nzwei",
                .boundary = "B-7",
                .contentType = "text/plain"});
    });
    add("file-part", [&](URLRequest request) {
        return addingBodyPart(std::move(request),
            {.key = "track",
                .value = photo.data,
                .boundary = "B-7",
                .contentType = "application/octet-stream"});
    });
    add("parts", [](URLRequest request) {
        return std::move(request)
            | addingBodyPart(
                {.key = "caption", .value = "Wind", .boundary = "B-7", .contentType = "text/plain"})
            | addingBodyPart(
                {.key = "first", .value = "\x89PNG\r\n", .boundary = "B-7", .contentType = "image/png"})
            | addingBodyPart({.key = "missing", .boundary = "B-7", .contentType = "image/png"})
            | addingBodyPart({.key = "empty", .value = "", .boundary = "B-7", .contentType = "text/plain"})
            | addingBodyPart({.key = "second",
                .value = R"({"a":1})",
                .boundary = "B-7",
                .contentType = "application/json"})
            | closingBody("B-7") | addingHeader("Content-Type", HTTPMediaType::multipartFormData("B-7"));
    });
    add("closing", [](URLRequest request) { return closingBody(std::move(request), "B-7"); });

    add("photo",
        [&](URLRequest request) { return std::move(request) | attaching(photo.data, photo.mimetype); });
    add("video",
        [&](URLRequest request) { return std::move(request) | attaching(video.data, "video/quicktime"); });
    add("photo-pending", [&](URLRequest request) { return std::move(request) | attaching(photo, 3); });
    add("video-pending", [&](URLRequest request) { return std::move(request) | attaching(video, -1); });
    add("photo-ids", [&](URLRequest request) {
        return std::move(request) | attaching(photo, std::vector<std::string>{"a", "b"});
    });
    add("video-ids", [&](URLRequest request) {
        return std::move(request) | attaching(video, std::vector<std::string>{"7"});
    });
    add("photo", [&](URLRequest request) { // no identifiers, no field
        return std::move(request) | attaching(photo, std::vector<std::string>());
    });
    add("no-bytes", [](URLRequest request) { return std::move(request) | attaching(Data(), "image/png"); });
    return bodies;
}

} // namespace orrenby::tests
