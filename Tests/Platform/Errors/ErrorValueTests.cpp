#include "Orrenby/Platform/Errors/ErrorValue.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <stdexcept>
#include <string>
#include <system_error>

namespace app {

enum class LoadFailure { Offline = 3, Refused = -4 };
enum class WideFailure : std::uint64_t { Last = std::numeric_limits<std::uint64_t>::max() };
struct ParseFailure {
    int line;
    std::string description() const { return "line " + std::to_string(line); }
};
struct Harmless {};

} // namespace app

template <> inline constexpr bool orrenby::isErrorValue<app::LoadFailure> = true;
template <> inline constexpr bool orrenby::isErrorValue<app::WideFailure> = true;
template <> inline constexpr bool orrenby::isErrorValue<app::ParseFailure> = true;

using namespace orrenby;

namespace {

Dictionary described(std::string text) { return {{std::string(NSLocalizedDescriptionKey), std::move(text)}}; }

class Declared : public CustomNSError<Declared> {};
class DerivedFailure : public std::runtime_error {
    using runtime_error::runtime_error;
};

} // namespace

TEST(ErrorValue, IsWhateverDerivesFromTheStandardException)
{
    static_assert(ErrorValue<std::exception>);
    static_assert(ErrorValue<const std::runtime_error&>);
    static_assert(ErrorValue<NSError>);
    static_assert(ErrorValue<AnyError>);
    static_assert(ErrorValue<Declared>);
    EXPECT_TRUE(isErrorValue<std::system_error>);
}

TEST(ErrorValue, IsWhateverOptedIn)
{
    EXPECT_TRUE(isErrorValue<app::LoadFailure>);
    EXPECT_TRUE(isErrorValue<app::ParseFailure>);
}

TEST(ErrorValue, IsNothingElse)
{
    static_assert(!ErrorValue<app::Harmless>);
    static_assert(!ErrorValue<std::string>);
    static_assert(!ErrorValue<std::exception_ptr>);
    EXPECT_FALSE(isErrorValue<int>);
}

TEST(ErrorValue, IsKnownToAnyThatHoldsIt)
{
    EXPECT_TRUE(Any(app::LoadFailure::Offline).isErrorValue());
    EXPECT_TRUE(Any(std::runtime_error("torn")).isErrorValue());
    EXPECT_TRUE(Any(std::make_shared<DerivedFailure>("torn")).isErrorValue());
    EXPECT_TRUE(Any(NSError("D", 1)).isErrorValue());
    EXPECT_FALSE(Any(app::Harmless{}).isErrorValue());
    EXPECT_FALSE(Any(std::make_shared<app::Harmless>()).isErrorValue());
    EXPECT_FALSE(Any(5).isErrorValue());
    EXPECT_FALSE(Any().isErrorValue());
}

TEST(ErrorValue, BridgesTheLibrarysErrorsAsTheyDeclare)
{
    const auto error = NSError("D", 1);

    EXPECT_TRUE(toNSError(error).isSame(error));
    EXPECT_EQ(toNSError(Declared()), NSError("Declared", 1));
}

TEST(ErrorValue, BridgesSystemErrorsByCategoryAndValue)
{
    const auto error = std::system_error(std::make_error_code(std::errc::no_such_file_or_directory), "open");

    EXPECT_EQ(toNSError(error), NSError("generic", ENOENT, described(error.what())));
}

TEST(ErrorValue, BridgesWhatDerivesFromSystemErrors)
{
    const auto error = std::filesystem::filesystem_error(
        "open", std::error_code(EACCES, std::system_category()));

    EXPECT_EQ(toNSError(error), NSError("system", EACCES, described(error.what())));
}

TEST(ErrorValue, BridgesOtherExceptionsByTheirDynamicType)
{
    const auto error = DerivedFailure("torn");
    const std::exception& base = error;

    EXPECT_EQ(toNSError(base), NSError("DerivedFailure", 1, described("torn")));
    EXPECT_EQ(toNSError(std::runtime_error("torn")), NSError("runtime_error", 1, described("torn")));
}

TEST(ErrorValue, BridgesALibraryErrorThatIsSeenAsAnException)
{
    const auto error = NSError("D", 1);
    const std::exception& base = error;

    EXPECT_TRUE(toNSError(base).isSame(error));
}

TEST(ErrorValue, BridgesEnumerationsByTheirRawValue)
{
    EXPECT_EQ(toNSError(app::LoadFailure::Offline), NSError("LoadFailure", 3));
    EXPECT_EQ(toNSError(app::LoadFailure::Refused), NSError("LoadFailure", -4));
    EXPECT_EQ(toNSError(app::WideFailure::Last), NSError("WideFailure", -1)) << "the bits are kept";
}

TEST(ErrorValue, BridgesOtherValuesByTheirDescription)
{
    EXPECT_EQ(toNSError(app::ParseFailure{12}), NSError("ParseFailure", 1, described("line 12")));
}
