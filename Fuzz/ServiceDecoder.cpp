// Responses for three services: any bytes are decoded, with a log entry for each member that is refused, or
// refused as a whole; and the report tells of something exactly when something was refused.

#include "Orrenby/Utilities/ServiceDecoder.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include <array>
#include <map>
#include <span>

using namespace orrenby;

namespace {

struct User {
    std::string name;
    std::optional<std::uint8_t> age;
    std::map<int, std::optional<bool>> flags;
};

struct Node {
    std::optional<std::int64_t> value;
    std::vector<Node> children;
};

using Places = std::vector<std::array<double, 2>>;

template <class Text> bool isJSON(const Text& text)
{
    try {
        const JSONDocument document(text);
        return true;
    } catch (const JSONReadError&) {
        return false;
    }
}

/// Asks the reader, which is strict about it.
bool isUTF8(std::string_view text)
{
    std::string quoted = "\"";
    for (const char character : text)
        quoted += character == '"' || character == '\\' ? 'x' : character;
    return isJSON(std::string_view(quoted += '"'));
}

void requireWhole(const DecodingReport& report, std::size_t size)
{
    for (const auto& failure : report.failures) {
        requireThat(failure.position.line >= 1 && failure.position.column >= 1);
        requireThat(failure.position.offset <= 2 * size);
        requireThat(failure.codingPath.size() <= 512);
        requireThat(failure.excerpt.size() <= (24 + 40) * 4 + 6 && isUTF8(failure.excerpt));
        requireThat(!failure.description().empty());
    }
}

template <class T> void requireSameVerdict(std::span<const std::byte> bytes)
{
    const auto report = decodeReport<T>(bytes);
    requireThat(report.isEmpty() == JSONDecoder().tryDecode<T>(bytes).isSuccess());
    requireWhole(report, bytes.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const Log::CaptureHandler log;
    Log::onEvent(log);
    std::size_t calls = 0;
    ServiceDecoder services;
    services.register_("user", [&](const User&) { ++calls; });
    services.register_("node", [&](const Node&) { ++calls; });
    services.register_("places", [&](const Places&) { ++calls; });

    const auto isDecoded = services.tryDecode(bytes).isSuccess();
    const auto refused = log.count();
    requireThat(calls + refused <= (isDecoded ? 3U : 0U));
    const auto report = decodeReport(services, bytes);
    requireThat(report.isEmpty() == (isDecoded && refused == 0));
    requireThat(report.failures.size() >= refused);
    requireWhole(report, size);

    // Bytes that are no JSON are refused alike for every type, and exceptions are slow under sanitizers.
    if (isJSON(bytes)) {
        requireSameVerdict<User>(bytes);
        requireSameVerdict<Node>(bytes);
        requireSameVerdict<Places>(bytes);
        requireSameVerdict<std::map<std::string, std::vector<std::optional<User>>>>(bytes);
    }
    Log::onEvent(nullptr);
    return 0;
}
