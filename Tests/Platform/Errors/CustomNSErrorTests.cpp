#include "Orrenby/Platform/Errors/CustomNSError.hpp"

#include <gmock/gmock.h>
#include <string>

using namespace orrenby;

namespace {

//! [Declaring an error type]
class QuotaExceeded : public CustomNSError<QuotaExceeded> {
public:
    explicit QuotaExceeded(std::int64_t bytes)
        : m_bytes(bytes)
    {}

    std::string description() const override { return "Over quota by " + std::to_string(m_bytes) + " bytes"; }

    static std::string errorDomain() { return "com.example.quota"; }
    std::int64_t errorCode() const { return 507; }
    Dictionary errorUserInfo() const { return {{"bytes", m_bytes}}; }

    friend bool operator==(const QuotaExceeded&, const QuotaExceeded&) = default;

private:
    std::int64_t m_bytes;
};
//! [Declaring an error type]

class PlainError : public CustomNSError<PlainError> {};

class ChosenName : public CustomNSError<ChosenName> {
public:
    static constexpr std::string_view printedTypeName = "Chosen";
};

class LargeQuotaExceeded : public QuotaExceeded {
public:
    using QuotaExceeded::QuotaExceeded;
};

template <class T>
concept Comparable = requires(const T& value)
{
    value == value;
};

} // namespace

TEST(CustomNSError, LooksAsTheTypeDeclares)
{
    const auto error = QuotaExceeded(12);

    EXPECT_EQ(error.nsError(), NSError("com.example.quota", 507, {{"bytes", 12}}));
    EXPECT_EQ(error.customNSError(), error.nsError());
}

TEST(CustomNSError, IsNamedAfterItsTypeByDefault)
{
    EXPECT_EQ(PlainError().nsError(), NSError("PlainError", 1));
    EXPECT_EQ(PlainError().description(), "PlainError");
    EXPECT_EQ(ChosenName().nsError(), NSError("Chosen", 1));
}

TEST(CustomNSError, NamesItsTypeInFullPrintedForm)
{
    EXPECT_EQ(QuotaExceeded(12).debugDescription(), "QuotaExceeded(Over quota by 12 bytes)");
}

TEST(CustomNSError, CopiesThroughItsInterface)
{
    const auto original = QuotaExceeded(12);
    const Error& error = original;

    const auto clone = error.clone();

    const auto* copy = dynamic_cast<const QuotaExceeded*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(*copy, original);
}

TEST(CustomNSError, ComparesAsTheTypeDeclares)
{
    EXPECT_TRUE(QuotaExceeded(12) == QuotaExceeded(12));
    EXPECT_FALSE(QuotaExceeded(12) == QuotaExceeded(13));
    static_assert(!Comparable<PlainError>, "a type that says nothing about equality has none");
}

TEST(CustomNSError, IsCaughtByItsType)
{
    EXPECT_THROW(throw LargeQuotaExceeded(1), QuotaExceeded);
    EXPECT_THROW(throw QuotaExceeded(1), Error);
    EXPECT_EQ(LargeQuotaExceeded(1).nsError(), QuotaExceeded(1).nsError());
}
