#include "Orrenby/Platform/Objects/FatalError.hpp"

#include <csignal>
#include <cstdio>
#include <gmock/gmock.h>
#include <malloc.h>
#include <string>
#include <unistd.h>

using namespace orrenby;

namespace {

std::size_t bytesBefore = 0;

/// Tells how many bytes came into use since `bytesBefore`. What was freed meanwhile still counts, because the
/// allocator keeps small blocks for later.
void tellWhatWasAllocated(int) { dprintf(STDERR_FILENO, "%zu bytes\n", mallinfo2().uordblks - bytesBefore); }

} // namespace

TEST(FatalError, WritesOneLineAndAborts)
{
    EXPECT_EXIT(fatalError("Method in abstract base class must be overridden", "Utilities/Discover", 145),
        testing::KilledBySignal(SIGABRT),
        "^Fatal error: Method in abstract base class must be overridden: file Utilities/Discover, line 145\n$");
}

TEST(FatalError, LeavesOutLineZero)
{
    EXPECT_DEATH(fatalError("No matching case", "Utilities/Streams"),
        "^Fatal error: No matching case: file Utilities/Streams\n$");
}

TEST(FatalError, WritesItsTextsAsTheyAre)
{
    EXPECT_DEATH(fatalError("100 %s of %d", "", 1), "^Fatal error: 100 %s of %d: file , line 1\n$");
}

TEST(FatalError, WritesViewsThatEndInTheMiddleOfAText)
{
    const std::string text = "message and more";

    EXPECT_DEATH(
        fatalError(std::string_view(text).substr(0, 7), "F", 2), "^Fatal error: message: file F, line 2\n$");
}

TEST(FatalError, AllocatesNothing)
{
    EXPECT_EXIT(
        {
            std::signal(SIGABRT, tellWhatWasAllocated);
            bytesBefore = mallinfo2().uordblks;
            fatalError("No memory", "Platform/Objects", 7);
        },
        testing::KilledBySignal(SIGABRT),
        "^Fatal error: No memory: file Platform/Objects, line 7\n0 bytes\n$");
}
