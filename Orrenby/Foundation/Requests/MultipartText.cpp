#include "Orrenby/Foundation/Requests/MultipartText.hpp"

#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Platform/Net/UUID.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <initializer_list>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr std::string_view lineEnd = "\r\n";

void append(std::string& text, std::initializer_list<std::string_view> pieces)
{
    for (const auto piece : pieces)
        text.append(piece);
}

/// Everything of a part up to the end of its name, which is left open for a file name.
void beginPart(std::string& text, std::string_view boundary, std::string_view name)
{
    append(text, {"--", boundary, lineEnd, "Content-Disposition: form-data; name=\"", name, "\""});
}

void addFileName(std::string& text, std::string_view fileName)
{
    append(text, {"; filename=\"", fileName, "\""});
}

/// The rest of a part's header, after its disposition.
void addContentType(std::string& text, std::string_view contentType)
{
    append(text, {lineEnd, "Content-Type: ", contentType, lineEnd, lineEnd});
}

/// A whole part without a type.
void addField(std::string& text, std::string_view boundary, std::string_view name, std::string_view value)
{
    beginPart(text, boundary, name);
    append(text, {lineEnd, lineEnd, value, lineEnd});
}

} // namespace

detail::MultipartFrame detail::bodyPartFrame(
    std::string_view key, std::string_view boundary, std::string_view contentType)
{
    auto frame = MultipartFrame{.before = {}, .after = std::string(lineEnd)};
    beginPart(frame.before, boundary, key);
    if (contentType != HTTPMediaType::plainText)
        addFileName(frame.before, UUID::random().uuidString());
    addContentType(frame.before, contentType);
    return frame;
}

std::string detail::closingDelimiter(std::string_view boundary)
{
    std::string text;
    append(text, {"--", boundary, "--", lineEnd}); // no line end before it: every part ends with one
    return text;
}

std::string detail::newBoundary() { return "Boundary-" + UUID::random().uuidString(); }

detail::MultipartFrame detail::uploadFrame(
    std::string_view boundary, std::string_view mimetype, const UploadFields& fields)
{
    const bool isVideo = mimetype.starts_with("video");
    const std::string_view kind = isVideo ? "video" : "photo";
    const auto fileName = UUID::random().uuidString() + (isVideo ? ".mp4" : ".jpg");

    auto frame = MultipartFrame{.before = {}, .after = std::string(lineEnd)};
    addField(frame.before, boundary, "type", kind);
    if (fields.pendingMediaCount) // before the file, and the identifiers after it: services rely on it
        addField(frame.before, boundary, "num_pending_media", std::to_string(*fields.pendingMediaCount));
    beginPart(frame.before, boundary, kind);
    addFileName(frame.before, fileName);
    addContentType(frame.before, mimetype);

    if (!fields.photoIDs.empty()) {
        const auto listed = std::vector<std::string>(fields.photoIDs.begin(), fields.photoIDs.end());
        addField(frame.after, boundary, "photo_ids", describe(listed));
    }
    frame.after += closingDelimiter(boundary);
    return frame;
}

} // namespace orrenby
