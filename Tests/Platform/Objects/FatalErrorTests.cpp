#include "Orrenby/Platform/Objects/FatalError.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <malloc.h>
#include <string>
#include <string_view>
#include <unistd.h>

using namespace orrenby;

namespace {

std::size_t bytesBefore = 0;

/// Tells how many bytes came into use since `bytesBefore`. What was freed meanwhile still counts, because the
/// allocator keeps small blocks for later. Itself it allocates nothing, as is due inside of a signal.
void tellWhatWasAllocated(int)
{
    constexpr std::string_view unit = " bytes\n";
    std::array<char, 32> text{};
    auto* end = std::to_chars(text.begin(), text.end(), mallinfo2().uordblks - bytesBefore).ptr;
    end = std::copy(unit.begin(), unit.end(), end);
    if (::write(STDERR_FILENO, text.data(), static_cast<std::size_t>(end - text.data())) < 0)
        std::_Exit(1);
}

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
