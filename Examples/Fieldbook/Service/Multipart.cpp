#include "Service/Multipart.hpp"

#include "Terminal/Text.hpp"
#include <algorithm>
#include <string>
#include <utility>

namespace fieldbook {

namespace {

constexpr std::string_view lineEnd = "\r\n";

/// What stands behind `name=` among the parameters of a header field, without its quotes.
std::string parameter(std::string_view field, std::string_view name)
{
    const auto sign = std::string("; ").append(name).append("=");
    const auto place = field.find(sign);
    if (place == std::string_view::npos)
        return "";
    field.remove_prefix(place + sign.size());
    if (!field.starts_with('"'))
        return std::string(field.substr(0, field.find(';')));
    field.remove_prefix(1);
    return std::string(field.substr(0, field.find('"')));
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
