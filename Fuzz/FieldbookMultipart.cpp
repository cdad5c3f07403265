// Bodies of several parts: what the library writes is read back whole, whatever it carries; and what comes
// from elsewhere is refused, or is in the body and can be written down again.

#include "Examples/Fieldbook/Service/Multipart.hpp"
#include "Examples/Fieldbook/Terminal/Text.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Foundation/Requests/HTTPMediaType.hpp"
#include "Orrenby/Foundation/Requests/RequestMultipart.hpp"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using namespace fieldbook;

namespace {

/// Takes off what stands before the first zero byte, and that byte.
std::string_view take(std::string_view& rest)
{
    const auto taken = rest.substr(0, rest.find('\0'));
    rest.remove_prefix(std::min(taken.size() + 1, rest.size()));
    return taken;
}

/// What may stand between quotation marks: writers do not escape.
std::string quotable(std::string_view text)
{
    auto result = std::string(text);
    std::erase_if(result, [](char byte) { return byte == '"' || byte == '\r' || byte == '\n'; });
    return result;
}

/// What may stand without quotation marks.
std::string word(std::string_view text)
{
    auto result = quotable(text);
    std::erase(result, ';');
    return std::string(trimmed(result));
}

std::string delimiter(std::string_view boundary) { return std::string("\r\n--").append(boundary); }

/// Makes the boundary longer until it delimits nothing in the content, as writers have to.
void avoid(std::string_view content, std::string& boundary)
{
    const auto line = std::string("\r\n").append(content); // it begins behind a blank line
    while (line.find(delimiter(boundary)) != std::string::npos)
        boundary += 'x';
}

/// Parts with a name, a type and a content each, until the input ends.
std::vector<ServicePart> partsFrom(std::string_view input)
{
    std::vector<ServicePart> parts;
    while (!input.empty()) {
        ServicePart part;
        part.name = quotable(take(input));
        part.mediaType = quotable(take(input));
        part.content = take(input);
        parts.push_back(part);
    }
    return parts;
}

std::string writtenByLibrary(const std::vector<ServicePart>& parts, std::string_view boundary)
{
    auto request = orrenby::URLRequest(orrenby::URL::make("http://service.example").value());
    for (const auto& part : parts)
        request = std::move(request)
            | orrenby::addingBodyPart({.key = part.name,
                .value = part.content,
                .boundary = boundary,
                .contentType = part.mediaType});
    request = std::move(request) | orrenby::closingBody(boundary);
    const auto body = request.httpBody().value();
    return {reinterpret_cast<const char*>(body.data()), body.size()};
}

void readWhatIsWritten(std::string_view input)
{
    auto boundary = "b" + word(take(input));
    const auto parts = partsFrom(input);
    for (const auto& part : parts)
        avoid(part.content, boundary);

    const auto read = partsIn(
        writtenByLibrary(parts, boundary), orrenby::HTTPMediaType::multipartFormData(boundary));

    requireThat(read && read->size() == parts.size());
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const auto& part = read->at(index);
        const auto& sent = parts[index];
        requireThat(part.name == sent.name && part.content == sent.content);
        requireThat(part.mediaType == trimmed(sent.mediaType));
        requireThat(part.fileName.empty() == (sent.mediaType == orrenby::HTTPMediaType::plainText));
    }
}

std::string written(const ServicePart& part, std::string_view boundary)
{
    return delimiter(boundary) + "\r\nContent-Disposition: form-data; name=\"" + part.name + "\"; filename=\""
        + part.fileName + "\"\r\nContent-Type: " + part.mediaType + "\r\n\r\n" + part.content;
}

void readWhatComesFromElsewhere(std::string_view input)
{
    const auto anyType = take(input);
    partsIn(input, anyType);

    const auto boundary = word(take(input));
    const auto type = orrenby::HTTPMediaType::multipartFormData(boundary);
    const auto parts = partsIn(input, type);
    if (!parts)
        return;
    std::size_t size = 0;
    std::string again;
    for (const auto& part : *parts) {
        size += part.name.size() + part.fileName.size() + part.mediaType.size() + part.content.size();
        requireThat(part.content.find(delimiter(boundary)) == std::string::npos);
        again += written(part, boundary);
        if (quotable(part.name) != part.name || quotable(part.fileName) != part.fileName)
            return; // a word may have a quotation mark in it, which cannot be quoted
    }
    requireThat(size <= input.size());
    again += delimiter(boundary) + "--";
    requireThat(partsIn(std::string_view(again).substr(2), type) == parts);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto input = std::string_view(reinterpret_cast<const char*>(data), size);
    readWhatIsWritten(input);
    readWhatComesFromElsewhere(input);
    return 0;
}
