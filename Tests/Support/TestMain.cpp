// The entry of every test program. It lives in one library, so that all suites share it and its precompiled
// header.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    // A forked death test would inherit locks of threads that do not exist in the child.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    testing::InitGoogleMock(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
