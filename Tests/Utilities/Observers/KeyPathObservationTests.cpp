#include "Orrenby/Utilities/Observers/KeyPathObservation.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

TEST(KeyPathObservation, OfTheInitialValueHasItAsOldValueToo)
{
    const auto observation = KeyPathObservation<int>::initial(5);

    EXPECT_TRUE(observation.isInitial());
    EXPECT_FALSE(observation.isChange());
    EXPECT_EQ(observation.value(), 5);
    EXPECT_EQ(observation.oldValue(), 5);
}

TEST(KeyPathObservation, OfAChangeHasBothValues)
{
    const auto observation = KeyPathObservation<std::string>::change({.value = "new", .oldValue = "old"});

    EXPECT_FALSE(observation.isInitial());
    EXPECT_TRUE(observation.isChange());
    EXPECT_EQ(observation.value(), "new");
    EXPECT_EQ(observation.oldValue(), "old");
}

TEST(KeyPathObservation, OfAChangeFromAnEmptyValueIsAChange)
{
    using Value = std::optional<int>;
    const auto observation = KeyPathObservation<Value>::change({.value = 3, .oldValue = std::nullopt});

    EXPECT_TRUE(observation.isChange());
    EXPECT_EQ(observation.oldValue(), std::nullopt);
}

TEST(KeyPathObservation, EqualsOneOfTheSameKindAndValues)
{
    using Observation = KeyPathObservation<int>;

    EXPECT_EQ(Observation::initial(5), Observation::initial(5));
    EXPECT_NE(Observation::initial(5), Observation::initial(6));
    EXPECT_NE(Observation::initial(5), Observation::change({5, 5}));
}
