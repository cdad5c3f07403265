#include "Orrenby/Foundation/UUID.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(UUIDText, IsWrittenIntoAName)
{
    //! [Writing an identifier into a name]
    const auto upload = UUID::make("6F9619FF-8B86-D011-B42D-00C04FC964FF").value();

    EXPECT_EQ(upload | lowercaseAlphanumericString, "6f9619ff8b86d011b42d00c04fc964ff");
    //! [Writing an identifier into a name]
}

TEST(UUIDText, HasThirtyTwoDigitsForZero)
{
    EXPECT_EQ(lowercaseAlphanumericString(UUID()), "00000000000000000000000000000000");
}
