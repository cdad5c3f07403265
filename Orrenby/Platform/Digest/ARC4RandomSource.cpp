#include "Orrenby/Platform/Digest/ARC4RandomSource.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI {

ARC4RandomSource::ARC4RandomSource(std::span<const std::byte> seed) noexcept
{
    constexpr std::byte empty{0};
    if (seed.empty())
        seed = std::span(&empty, 1);

    for (std::size_t place = 0; place < m_state.size(); ++place)
        m_state[place] = static_cast<std::uint8_t>(place);
    std::uint8_t other = 0;
    for (std::size_t place = 0; place < m_state.size(); ++place) {
        const auto key = std::to_integer<unsigned>(seed[place % seed.size()]);
        other = static_cast<std::uint8_t>(other + m_state[place] + key);
        std::swap(m_state[place], m_state[other]);
    }
}

ARC4RandomSource::ARC4RandomSource(std::string_view seed) noexcept
    : ARC4RandomSource(std::as_bytes(std::span(seed)))
{}

std::uint8_t ARC4RandomSource::nextByte() noexcept
{
    ++m_first;
    auto& one = m_state[m_first];
    m_second = static_cast<std::uint8_t>(m_second + one);
    auto& two = m_state[m_second];
    std::swap(one, two);
    return m_state[static_cast<std::uint8_t>(one + two)];
}

void ARC4RandomSource::dropBytes(std::uint64_t count) noexcept
{
    for (; count > 0; --count)
        nextByte();
}

std::uint64_t ARC4RandomSource::nextInt(std::uint64_t upperBound) noexcept
{
    __extension__ using Wide = unsigned __int128;
    const int width = upperBound > (std::uint64_t{1} << 32U) ? 8 : 4;
    const auto words = Wide{1} << static_cast<unsigned>(width * 8);
    const auto fair = upperBound == 0 ? words : words - words % upperBound;
    while (true) {
        std::uint64_t word = 0;
        for (int count = 0; count < width; ++count)
            word = (word << 8U) | nextByte();
        if (word < fair)
            return upperBound == 0 ? 0 : word % upperBound;
    }
}

} // namespace orrenby
