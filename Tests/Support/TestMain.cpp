// The entry of every test program. It lives in one library, so that all suites share it and its precompiled
// header.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#if defined(__SANITIZE_THREAD__)

/// What ThreadSanitizer is not to report. It does not see the atomic counter by which ICU, which is built
/// without it, hands a number format to other threads that it has made ready for them; it does see them copy
/// from it.
extern "C" const char* __tsan_default_suppressions()
{
    return "race:icu_*::number::impl::MicroProps::processQuantity\n";
}

#endif

int main(int argumentCount, char** arguments)
{
    // A forked death test would inherit locks of threads that do not exist in the child.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    testing::InitGoogleMock(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
