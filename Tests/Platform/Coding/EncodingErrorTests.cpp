#include "Orrenby/Platform/Coding/EncodingError.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(EncodingError, SaysWhatWhereAndWhy)
{
    //! [Reading an encoding error]
    const EncodingError error = EncodingError::invalidValue(7, {{"a", "b"}, "No sevens"});

    const std::optional<int> value = error.value().cast<int>();
    const std::string why = error.context().debugDescription;
    //! [Reading an encoding error]

    EXPECT_EQ(value, 7);
    EXPECT_EQ(why, "No sevens");
    EXPECT_EQ(error.description(), "invalidValue(7, at a > b: No sevens)");
    EXPECT_EQ(error.nsError().code(), 4866);
    EXPECT_EQ(error.nsError().domain(), "NSCocoaErrorDomain");
}
