#include "Orrenby/Platform/Store/StoreError.hpp"

#include <gmock/gmock.h>

using namespace orrenby;

TEST(StoreError, SaysWhatHappened)
{
    //! [Reading a store error]
    const auto error = StoreError(StoreError::Kind::DiskFull, {.message = "no room"});

    EXPECT_EQ(error.kind(), StoreError::Kind::DiskFull);
    EXPECT_EQ(error.description(), "DiskFull: no room");
    //! [Reading a store error]
}

TEST(StoreError, IsAPlatformErrorWithItsKindAsTheCode)
{
    const auto error = StoreError(StoreError::Kind::Busy, {.message = "locked"}).nsError();

    EXPECT_EQ(error, NSError("StoreError", 5, {{NSLocalizedDescriptionKey, "Busy: locked"}}));
}

TEST(StoreError, NamesTheLastKind)
{
    EXPECT_EQ(StoreError(StoreError::Kind::MigrationFailed, {}).description(), "MigrationFailed: ");
}
