// The entry of every test program. It lives in one library, so that all suites share it and its precompiled
// header.

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#if defined(__SANITIZE_THREAD__)

/// What ThreadSanitizer is not to report. It does not see the atomic operations by which ICU, which is built
/// without it, hands what one thread made ready to others; it does see ICU copy and allocate in both.
extern "C" const char* __tsan_default_suppressions()
{
    return "called_from_lib:libicuuc.so\n"
           "called_from_lib:libicui18n.so\n";
}

#endif

int main(int argumentCount, char** arguments)
{
    // A forked death test would inherit locks of threads that do not exist in the child.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    // Properties are tried with the same values every time, unless somebody asks for others.
    setenv("RC_PARAMS", "seed=1 max_success=500", /*replaces*/ 0);
    testing::InitGoogleMock(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
