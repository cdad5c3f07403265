// Decoding into a nested struct: any bytes give a value or a typed error, and a value that was decoded is
// encoded and decoded again equal.

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"
#include <map>
#include <span>

using namespace orrenby;

namespace {

struct Node {
    std::optional<std::string> name;
    std::optional<std::int64_t> count;
    std::optional<double> ratio;
    std::optional<std::vector<bool>> flags;
    std::optional<std::vector<Node>> children;
    std::optional<std::map<std::string, std::optional<std::uint64_t>>> byName;
    std::optional<Data> bytes;
    std::optional<Date> at;
    std::optional<std::int8_t> small;

    friend bool operator==(const Node&, const Node&) = default;
};

/// Nothing for what is refused. Everything else than a decoding error is a fault.
template <class T> std::optional<T> decoded(const JSONDecoder& decoder, std::span<const std::byte> bytes)
{
    try {
        return decoder.decode<T>(bytes);
    } catch (const DecodingError& error) {
        requireThat(!error.description().empty());
        requireThat(error.context().codingPath.size() <= 512);
        return std::nullopt;
    }
}

template <class T>
void requireRoundTrip(const T& value, const JSONEncoder& encoder, const JSONDecoder& decoder)
{
    const auto again = decoder.decode<T>(encoder.encode(value));
    requireThat(again == value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    JSONDecoder decoder;
    JSONEncoder encoder;
    decoder.setDateDecodingStrategy(JSONDecoder::DateDecodingStrategy::secondsSince1970());
    encoder.setDateEncodingStrategy(JSONEncoder::DateEncodingStrategy::secondsSince1970());
    if (const auto value = decoded<Node>(decoder, bytes)) {
        requireRoundTrip(*value, encoder, decoder);
        encoder.setOutputFormatting({.prettyPrinted = true, .sortedKeys = true});
        requireRoundTrip(*value, encoder, decoder);
    }

    decoder.setKeyDecodingStrategy(JSONDecoder::KeyDecodingStrategy::convertFromSnakeCase());
    decoder.setDateDecodingStrategy(JSONDecoder::DateDecodingStrategy::iso8601());
    decoder.setDataDecodingStrategy(JSONDecoder::DataDecodingStrategy::deferredToData());
    encoder.setDateEncodingStrategy(JSONEncoder::DateEncodingStrategy::iso8601());
    encoder.setDataEncodingStrategy(JSONEncoder::DataEncodingStrategy::deferredToData());
    if (const auto value = decoded<Node>(decoder, bytes))
        requireRoundTrip(*value, encoder, decoder);
    return 0;
}
