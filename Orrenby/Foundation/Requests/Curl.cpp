#include "Orrenby/Foundation/Requests/Curl.hpp"

#include "Orrenby/Foundation/Requests/HTTPHeaderField.hpp"
#include <algorithm>
#include <cstddef>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Between single quotes the shell reads everything as it is, except the quote itself.
std::string quoted(std::string_view text)
{
    std::string result = "'";
    for (const char character : text) {
        if (character == '\'')
            result += "'\\''";
        else if (character != '\0') // ends an argument, wherever it came from
            result += character;
    }
    return result += "'";
}

bool isTokenCharacter(char character)
{
    constexpr std::string_view marks = "!#$%&'*+-.^_`|~";
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
        || (character >= '0' && character <= '9') || marks.find(character) != std::string_view::npos;
}

bool isToken(std::string_view name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), isTokenCharacter);
}

/// Whether it survives being copied into a terminal: no control characters but line feeds.
bool isPlainText(std::string_view text)
{
    const auto isPlain = [](char character) {
        return character == '\n' || (static_cast<unsigned char>(character) >= 0x20 && character != 0x7F);
    };
    return std::all_of(text.begin(), text.end(), isPlain) && isValidUTF8(text);
}

/// What `printf` writes as these bytes.
std::string printfFormat(std::string_view bytes)
{
    std::string format;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isSpecial = character == '\\' || character == '%' || character == '\''
            || (character == '-' && format.empty()); // where an option would stand
        if (byte >= 0x20 && byte < 0x7F && !isSpecial)
            format += character;
        else {
            format += '\\';
            for (const unsigned shift : {6U, 3U, 0U})
                format += static_cast<char>('0' + ((byte >> shift) & 7U));
        }
    }
    return quoted(format);
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t") == std::string_view::npos; }

void addMethod(std::string& command, const URLRequest& request)
{
    const auto& method = request.httpMethod();
    if (method == "HEAD" && !request.httpBody())
        command += " --head"; // otherwise curl waits for a body
    else if (method != "GET" || request.httpBody())
        command += " --request " + quoted(method);
}

void addHeaders(std::string& command, const URLRequest& request)
{
    for (const auto& [name, value] : request.httpHeaders())
        if (isToken(name))
            command += " --header " + quoted(isBlank(value) ? name + ";" : name + ": " + value);
    if (request.httpBody() && !request.httpHeaders().contains(HTTPHeaderField::contentType))
        command += " --header " + quoted(std::string(HTTPHeaderField::contentType) + ":"); // or curl adds one
}

void addURL(std::string& command, const URL& url)
{
    const auto& text = url.absoluteString();
    if (text.find_first_of("[]{}") != std::string::npos)
        command += " --globoff"; // or they stand for several addresses
    if (text.find("/.") != std::string::npos)
        command += " --path-as-is"; // or it is shortened
    command += " --url " + quoted(text);
}

} // namespace

std::string detail::curlCommand(const URLRequest& request)
{
    std::string command = "curl";
    addMethod(command, request);
    addHeaders(command, request);

    std::string writer;
    if (const auto& body = request.httpBody()) {
        const auto text = std::string_view(reinterpret_cast<const char*>(body->data()), body->size());
        if (isPlainText(text))
            command += " --data-raw " + quoted(text);
        else {
            writer = "printf " + printfFormat(text) + " | ";
            command += " --data-binary @-";
        }
    }
    addURL(command, request.url());
    return writer + command;
}

} // namespace orrenby
