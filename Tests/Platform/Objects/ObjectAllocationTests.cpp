#include "Orrenby/Platform/Objects/Object.hpp"

#include "Benchmarks/Support/Allocations.hpp"
#include <gtest/gtest.h>

using namespace orrenby;

namespace {

class Reading : public Lifetime {
public:
    explicit Reading(double level)
        : m_level(level)
    {}
    double level() const { return m_level; }

private:
    void release() noexcept final {}
    template <class T> friend class orrenby::Object;

    double m_level;
};

} // namespace

TEST(ObjectAllocation, IsOneBlockForTheObjectAndItsCounts)
{
    const auto before = benchmarks::allocations();

    const Ref<Reading> reading = make<Reading>(2.5);
    const WeakRef<Reading> watch = reading;

    EXPECT_EQ((benchmarks::allocations() - before).blocks, 1);
    EXPECT_EQ(reading->level(), 2.5);
}
