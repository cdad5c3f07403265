#include "Orrenby/Utilities/JSON/AnyJSONValue.hpp"

#include "Orrenby/Platform/Coding/JSONDecoder.hpp"
#include "Orrenby/Utilities/JSON/JSONObject.hpp"
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <string_view>

using namespace orrenby;

namespace {

thread_local int throwCount = 0;

} // namespace

/// Counts what is thrown, by this program and by the libraries, and throws it. It has another name here than
/// in the program, because compilers do not agree on how the function that it stands for is declared.
extern "C" void countAndThrow(void* object, void* type, void (*destroy)(void*)) __asm__("__cxa_throw");

void countAndThrow(void* object, void* type, void (*destroy)(void*))
{
    using Throw = void (*)(void*, void*, void (*)(void*));
    ++throwCount;
    reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"))(object, type, destroy);
    __builtin_unreachable();
}

namespace {

/// How many exceptions decoding throws.
template <class T> int throwsOf(std::string_view text)
{
    const int before = throwCount;
    static_cast<void>(JSONDecoder().tryDecode<T>(text));
    return throwCount - before;
}

constexpr std::string_view everyKind
    = R"({"a": true, "b": [1, -2.5, 1e300, "x", [], {}], "c": {"d": {"e": "\u00e9"}}, "f": 18446744073709551615})";

} // namespace

TEST(AnyJSONValueThrowing, IsNotHowKindsAreToldApart)
{
    EXPECT_EQ(throwsOf<AnyJSONValue>(everyKind), 0);
    EXPECT_EQ(throwsOf<JSONObject>(everyKind), 0);
}

TEST(AnyJSONValueThrowing, IsHowWhatIsRefusedIsTold)
{
    EXPECT_EQ(throwsOf<AnyJSONValue>(R"({"a": [1, null]})"), 1);
    EXPECT_EQ(throwsOf<JSONObject>(R"({"a": [1, null]})"), 1);
}
