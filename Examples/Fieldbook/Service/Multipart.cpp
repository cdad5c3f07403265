#include "Service/Multipart.hpp"

#include "Terminal/Text.hpp"
#include <algorithm>
#include <string>
#include <utility>

namespace fieldbook {

namespace {

constexpr std::string_view lineEnd = "\r\n";

/// Takes off what stands before the first semicolon that is in no quotation marks, and the semicolon.
std::string_view takePiece(std::string_view& field)
{
    bool isQuoted = false;
    const auto end = std::find_if(field.begin(), field.end(), [&isQuoted](char byte) {
        isQuoted = isQuoted != (byte == '"');
        return byte == ';' && !isQuoted;
    });
    const auto piece = field.substr(0, static_cast<std::size_t>(end - field.begin()));
    field.remove_prefix(std::min(piece.size() + 1, field.size()));
    return trimmed(piece);
}

/// What stands behind `name=` among the parameters of a header field, without its quotes.
std::string parameter(std::string_view field, std::string_view name)
{
    takePiece(field); // what the parameters belong to
    const auto sign = std::string(name).append("=");
    while (!field.empty()) {
        auto value = takePiece(field);
        if (!value.starts_with(sign))
            continue;
        value.remove_prefix(sign.size());
        const bool isQuoted = value.starts_with('"');
        value.remove_prefix(isQuoted ? 1 : 0);
        return std::string(isQuoted ? value.substr(0, value.find('"')) : value);
    }
    return "";
}

/// The part before the first blank line are header fields.
std::optional<ServicePart> partFrom(std::string_view text)
{
    const auto end = text.find("\r\n\r\n");
    if (end == std::string_view::npos)
        return {};
    ServicePart part;
    part.content = text.substr(end + 4);
    for (auto head = text.substr(0, end); !head.empty();) {
        const auto line = head.substr(0, head.find(lineEnd));
        head.remove_prefix(std::min(line.size() + lineEnd.size(), head.size()));
        constexpr std::string_view disposition = "Content-Disposition:";
        constexpr std::string_view type = "Content-Type:";
        if (line.starts_with(disposition)) {
            part.name = parameter(line, "name");
            part.fileName = parameter(line, "filename");
        } else if (line.starts_with(type))
            part.mediaType = trimmed(line.substr(type.size()));
    }
    return part;
}

} // namespace

std::optional<std::vector<ServicePart>> partsIn(std::string_view body, std::string_view contentType)
{
    const auto boundary = parameter(contentType, "boundary");
    if (!contentType.starts_with("multipart/form-data") || boundary.empty())
        return {};
    const auto delimiter = "\r\n--" + boundary;
    const auto first = std::string_view(delimiter).substr(lineEnd.size());
    if (!body.starts_with(first))
        return {};
    body.remove_prefix(first.size());
    std::vector<ServicePart> parts;
    while (body.starts_with(lineEnd)) {
        body.remove_prefix(lineEnd.size());
        const auto end = body.find(delimiter);
        if (end == std::string_view::npos)
            return {};
        auto part = partFrom(body.substr(0, end));
        if (!part)
            return {};
        parts.push_back(*std::move(part));
        body.remove_prefix(end + delimiter.size());
    }
    return body.starts_with("--") ? std::optional(std::move(parts)) : std::nullopt;
}

} // namespace fieldbook
