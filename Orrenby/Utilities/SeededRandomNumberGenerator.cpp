#include "Orrenby/Utilities/SeededRandomNumberGenerator.hpp"

#include "Orrenby/Platform/Objects/CallSite.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Utilities/Log.hpp"
#include <memory>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

namespace {

constexpr auto sourceFile = "Utilities/SeededRandomNumberGenerator";

template <class Message> void warn(int line, const Message& message)
{
    Log::warning(message, CallSite(sourceFile, line, "init(_:min:max:)"));
}

[[noreturn]] void overflowed() { fatalError("Arithmetic operation overflowed", sourceFile, 45); }

} // namespace

SeededRandomNumberGenerator::SeededRandomNumberGenerator(
    std::string_view seed, SeededRandomNumberBounds bounds)
    : m_source(std::make_shared<ARC4RandomSource>(seed))
    , m_min(bounds.min)
    , m_max(bounds.max)
{
    const auto [min, max] = bounds;
    const auto minText = std::to_string(min);
    const auto maxText = std::to_string(max);
    if (min < 0) {
        warn(28, [&] {
            return "SeededRandomNumberGenerator only supports non-negative ranges - correcting min from "
                + minText + " to 0";
        });
        m_min = 0;
    }
    if (max < min) { // as given, not as corrected
        warn(34, [&] {
            return "SeededRandomNumberGenerator min:" + minText + " is bigger than max:" + maxText
                + " - resetting max to min";
        });
        m_max = min;
    }
}

std::uint64_t SeededRandomNumberGenerator::next()
{
    std::int64_t bound = 0;
    if (__builtin_sub_overflow(m_max, m_min, &bound) || __builtin_add_overflow(bound, 1, &bound))
        overflowed();

    const auto drawn = static_cast<std::int64_t>(m_source->nextInt(static_cast<std::uint64_t>(bound)));
    std::int64_t result = 0;
    if (__builtin_add_overflow(drawn, m_min, &result))
        overflowed();
    if (result < 0)
        fatalError("Negative value is not representable", sourceFile, 46);
    return static_cast<std::uint64_t>(result);
}

} // namespace orrenby
