#include "Orrenby/Platform/World/RandomSource.hpp"

#include <cstdlib>

namespace orrenby::inline ORRENBY_ABI {

namespace {

class SystemRandomSource final : public RandomSource {
public:
    std::uint32_t below(std::uint32_t bound) override { return arc4random_uniform(bound); }

    std::uint64_t word() override
    {
        std::uint64_t word = 0;
        arc4random_buf(&word, sizeof word);
        return word;
    }
};

} // namespace

RandomSource::~RandomSource() = default;

std::shared_ptr<RandomSource> RandomSource::system()
{
    static const auto& source = *new std::shared_ptr<RandomSource>(std::make_shared<SystemRandomSource>());
    return source;
}

} // namespace orrenby
