#include "Orrenby/Foundation/Requests/StreamedUpload.hpp"

#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Foundation/Requests/MultipartText.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

BodyStream framedFile(const detail::MultipartFrame& frame, const std::string& path)
{
    BodyStream body;
    body.append(frame.before);
    body.appendFile(path);
    body.append(frame.after);
    return body;
}

} // namespace

std::string HTTPBodyFile::description() const { return mimetype + ", " + debugDescribe(path); }

StreamedUpload makeStreamedUpload(const HTTPBodyFile& media, const StreamedUploadOptions& options)
{
    const auto boundary = detail::newBoundary();
    const auto frame = detail::uploadFrame(boundary, media.mimetype,
        {.pendingMediaCount = options.pendingMediaCount, .photoIDs = options.photoIDs});
    return {.contentType = HTTPMediaType::multipartFormData(boundary), .body = framedFile(frame, media.path)};
}

Result<StreamedUpload, BodyStreamError> tryMakeStreamedUpload(
    const HTTPBodyFile& media, const StreamedUploadOptions& options)
{
    try {
        return Result<StreamedUpload, BodyStreamError>::success(makeStreamedUpload(media, options));
    } catch (const BodyStreamError& error) {
        return Result<StreamedUpload, BodyStreamError>::failure(error);
    }
}

void appendBodyPart(BodyStream& body, const BodyPart& part)
{
    const auto value = part.value.bytes();
    if (!value)
        return;
    const auto frame = detail::bodyPartFrame(part.key, part.boundary, part.contentType);
    body.append(frame.before);
    body.append(Data(value->begin(), value->end()));
    body.append(frame.after);
}

void appendBodyPart(BodyStream& body, const BodyFilePart& part)
{
    const auto frame = detail::bodyPartFrame(part.key, part.boundary, part.contentType);
    body.append(framedFile(frame, std::string(part.path)));
}

void appendClosingDelimiter(BodyStream& body, std::string_view boundary)
{
    body.append(detail::closingDelimiter(boundary));
}

} // namespace orrenby
