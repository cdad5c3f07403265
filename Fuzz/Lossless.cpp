// Values from bytes: any bytes give a value or a typed error, never both; a value that was read is written
// and read again equal, and the C library reads the same number.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Utilities/LosslessDataConvertible.hpp"
#include <cstdlib>
#include <span>

using namespace orrenby;

namespace {

template <class T> bool isSame(const T& first, const T& second)
{
    return first == second || (first != first && second != second);
}

template <class T> std::optional<T> requireSound(std::span<const std::byte> bytes)
{
    const auto outcome = tryFromLosslessData<T>(bytes);
    const auto text = textFromData(bytes);
    if (const auto error = outcome.error()) {
        using ConversionError = LosslessDataConvertibleError;
        const Data data(bytes.begin(), bytes.end());
        requireThat(*error
            == (text ? ConversionError::failedToConvertFromString(*text)
                     : ConversionError::failedToConvertFromData(data)));
        requireThat(!error->description().empty());
        return std::nullopt;
    }
    requireThat(text.has_value());
    const auto value = outcome.unwrap();
    requireThat(isSame(fromLosslessData<T>(losslessData(value)), value));
    return value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto text = requireSound<std::string>(bytes);
    requireThat(!text || losslessData(*text) == Data(bytes.begin(), bytes.end()));
    if (const auto number = requireSound<double>(bytes))
        requireThat(isSame(std::strtod(text->c_str(), nullptr), *number));
    if (const auto number = requireSound<float>(bytes))
        requireThat(isSame(std::strtof(text->c_str(), nullptr), *number));
    const auto integer = requireSound<std::int64_t>(bytes);
    if (integer)
        requireThat(std::strtoll(text->c_str(), nullptr, 10) == *integer);
    if (const auto small = requireSound<std::int8_t>(bytes))
        requireThat(integer == *small);
    if (const auto large = requireSound<std::uint64_t>(bytes))
        requireThat(std::strtoull(text->c_str(), nullptr, 10) == *large);
    requireSound<bool>(bytes);
    return 0;
}
