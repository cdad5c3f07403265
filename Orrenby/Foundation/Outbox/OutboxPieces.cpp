#include "Orrenby/Foundation/Outbox/OutboxPieces.hpp"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <sys/stat.h>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

constexpr std::string_view bytesMark = "b";
constexpr std::string_view fileMark = "f";

/// What tells a file's content from another, as far as it outlives a restart of the machine, which may number
/// devices anew.
struct KeptFile {
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    friend bool operator==(const KeptFile&, const KeptFile&) = default;
};

KeptFile kept(const std::string& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        throw BodyStreamError(BodyStreamError::Kind::CannotOpen, path, errno);
    return {.size = status.st_size, .seconds = status.st_mtim.tv_sec, .nanoseconds = status.st_mtim.tv_nsec};
}

template <class Number> std::optional<Number> numberFrom(std::string_view text)
{
    Number number = 0;
    const auto* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end)
        return std::nullopt;
    return number;
}

void appendBytes(Data& data, std::string_view text)
{
    const auto* const bytes = reinterpret_cast<const std::byte*>(text.data());
    data.insert(data.end(), bytes, bytes + text.size());
}

/// Adds the file, which has to be what it was.
void appendKeptFile(BodyStream& body, const std::string& path, const KeptFile& expected)
{
    // From here on the body itself notices a change; the look at the file comes afterwards, so that none is
    // missed between the two.
    body.appendFile(path);
    const auto now = kept(path);
    if (now.size < expected.size)
        throw BodyStreamError(BodyStreamError::Kind::Shrunk, path);
    if (now != expected)
        throw BodyStreamError(BodyStreamError::Kind::Changed, path);
}

} // namespace

void appendText(Data& data, std::string_view text)
{
    appendBytes(data, std::to_string(text.size()) + ":");
    appendBytes(data, text);
    appendBytes(data, ",");
}

std::optional<std::vector<std::string_view>> textsFrom(std::span<const std::byte> data)
{
    std::string_view rest(reinterpret_cast<const char*>(data.data()), data.size());
    std::vector<std::string_view> texts;
    while (!rest.empty()) {
        const auto colon = rest.substr(0, 20).find(':'); // no length has more digits
        if (colon == std::string_view::npos)
            return std::nullopt;
        const auto length = numberFrom<std::size_t>(rest.substr(0, colon));
        rest.remove_prefix(colon + 1);
        if (!length || *length >= rest.size() || rest[*length] != ',')
            return std::nullopt;
        texts.push_back(rest.substr(0, *length));
        rest.remove_prefix(*length + 1);
    }
    return texts;
}

Data dataFromHeaders(const HTTPHeaders& headers)
{
    Data data;
    for (const auto& field : headers) {
        appendText(data, field.name);
        appendText(data, field.value);
    }
    return data;
}

std::optional<HTTPHeaders> headersFromData(std::span<const std::byte> data)
{
    const auto texts = textsFrom(data);
    if (!texts || texts->size() % 2 != 0)
        return std::nullopt;
    HTTPHeaders headers;
    for (std::size_t index = 0; index < texts->size(); index += 2)
        headers.set((*texts)[index], (*texts)[index + 1]);
    return headers;
}

void OutboxBodyWriter::append(std::string_view bytes)
{
    if (bytes.empty())
        return;
    appendText(m_content, bytesMark);
    appendText(m_content, bytes);
    m_length += bytes.size();
}

void OutboxBodyWriter::appendFile(const std::string& path)
{
    BodyStream().appendFile(path); // whether it can be
    const auto whole = std::filesystem::absolute(path).string();
    const auto file = kept(whole);
    appendText(m_content, fileMark);
    appendText(m_content, whole);
    for (const auto number : {file.size, file.seconds, file.nanoseconds})
        appendText(m_content, std::to_string(number));
    m_length += static_cast<std::uint64_t>(file.size);
}

std::optional<BodyStream> bodyFromData(std::span<const std::byte> data)
{
    const auto texts = textsFrom(data);
    if (!texts)
        return std::nullopt;
    BodyStream body;
    auto text = texts->begin();
    while (text != texts->end()) {
        const auto left = texts->end() - text;
        if (*text == bytesMark && left >= 2) {
            body.append(text[1]);
            text += 2;
        } else if (*text == fileMark && left >= 5) {
            const auto size = numberFrom<std::int64_t>(text[2]);
            const auto seconds = numberFrom<std::int64_t>(text[3]);
            const auto nanoseconds = numberFrom<std::int64_t>(text[4]);
            if (!size || !seconds || !nanoseconds)
                return std::nullopt;
            appendKeptFile(body, std::string(text[1]),
                {.size = *size, .seconds = *seconds, .nanoseconds = *nanoseconds});
            text += 5;
        } else
            return std::nullopt;
    }
    return body;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
