#include "Orrenby/Platform/Objects/FatalError.hpp"

#include <cstdio>
#include <cstdlib>

namespace orrenby::inline ORRENBY_ABI {

void fatalError(std::string_view message, std::string_view file, int line) noexcept
{
    // A message is one line by promise, so a length beyond int cannot occur.
    const auto length = [](std::string_view text) { return static_cast<int>(text.size()); };
    std::fprintf(
        stderr, "Fatal error: %.*s: file %.*s", length(message), message.data(), length(file), file.data());
    if (line != 0)
        std::fprintf(stderr, ", line %d", line);
    std::fputc('\n', stderr);
    std::fflush(stderr);
    std::abort();
}

} // namespace orrenby
