// What an outbox reads of a store's file: header fields and bodies are read or refused, and written down
// again they are the same.

#include "Orrenby/Foundation/Outbox/OutboxPieces.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include <cstddef>
#include <cstdint>
#include <span>

using namespace orrenby;

namespace {

void readTexts(std::span<const std::byte> data)
{
    const auto texts = detail::textsFrom(data);
    if (!texts)
        return;
    Data again;
    for (const auto text : *texts)
        detail::appendText(again, text);
    requireThat(detail::textsFrom(again) == texts);
    requireThat(again.size() <= data.size()); // zeros before a length are left out
}

void readHeaders(std::span<const std::byte> data)
{
    const auto headers = detail::headersFromData(data);
    if (headers)
        requireThat(detail::headersFromData(detail::dataFromHeaders(*headers)) == headers);
}

void readBody(std::span<const std::byte> data)
{
    try {
        detail::bodyFromData(data);
    } catch (const BodyStreamError&) {
        // Most texts are no path of a file.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const auto data = std::as_bytes(std::span(bytes, size));
    readTexts(data);
    readHeaders(data);
    readBody(data);
    return 0;
}
