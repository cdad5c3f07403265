// Whatever bytes the texts of an event hold, the console shows one line of valid UTF-8 without control
// characters.

#include "Fuzz/Support/FuzzedLogEvent.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Fuzz/Support/WellFormed.hpp"
#include "Orrenby/Utilities/Log/ConsoleHandler.hpp"

using namespace orrenby;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto bytes = FuzzedBytes(data, size);
    const auto level = *Log::Level::make(bytes.number() % 6);
    const auto line = Log::ConsoleHandler::line(
        level, fuzzedLogEvent(bytes), Date(bytes.number() * 0.7), false);

    requireThat(line.ends_with('\n'));
    const auto content = std::string_view(line).substr(0, line.size() - 1);
    requireThat(isWellFormed(content));
    for (const char byte : content)
        requireThat(static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7F);
    return 0;
}
