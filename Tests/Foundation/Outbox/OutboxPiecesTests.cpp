#include "Orrenby/Foundation/Outbox/OutboxPieces.hpp"

#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <gmock/gmock.h>
#include <random>

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

namespace {

std::optional<std::vector<std::string_view>> textsIn(std::string_view text)
{
    return detail::textsFrom(std::as_bytes(std::span(text)));
}

} // namespace

TEST(OutboxPieces, KeepTextsOfAnyBytes)
{
    using namespace std::string_literals;
    Data data;
    for (const auto& text : {""s, "a,b"s, "3:x\0y,"s, "\r\n\xff"s})
        detail::appendText(data, text);

    EXPECT_THAT(detail::textsFrom(data), Optional(ElementsAre(""s, "a,b"s, "3:x\0y,"s, "\r\n\xff"s)));
}

TEST(OutboxPieces, AreWrittenWithTheirLengths)
{
    EXPECT_THAT(textsIn("3:a b,0:,"), Optional(ElementsAre("a b", "")));
    EXPECT_THAT(textsIn(""), Optional(IsEmpty()));
}

TEST(OutboxPieces, AreNothingWhenTheDataIsDamaged)
{
    for (const auto* const text : {":", "3", "3:", "3:ab", "3:abc", "3:abc.", "3:abcd,", "-1:,", "x:a,",
             "1 :a,", ":,", "18446744073709551615:a,", "99999999999999999999:a,", "1:a,x"})
        EXPECT_EQ(textsIn(text), std::nullopt) << text;
}

TEST(OutboxPieces, OfCutDataAreNothing)
{
    Data data;
    for (const auto* const text : {"b", "some bytes", "b", "more"})
        detail::appendText(data, text);
    const auto whole = detail::textsFrom(data);

    for (std::size_t size = 0; size < data.size(); ++size) {
        const auto texts = detail::textsFrom(std::span(data).first(size));
        // Cut between two of them, it is a shorter list.
        EXPECT_TRUE(!texts || texts->size() < whole->size()) << size;
    }
}

TEST(OutboxPieces, NeverReadBeyondRandomData)
{
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        std::string text(random() % 40, '\0');
        for (char& byte : text)
            byte = "0123456789:,bf"[random() % 14];
        const auto bytes = std::as_bytes(std::span(std::string_view(text)));
        std::size_t length = 0;
        for (const auto part : detail::textsFrom(bytes).value_or(std::vector<std::string_view>()))
            length += part.size() + 3;
        EXPECT_LE(length, text.size());
        detail::headersFromData(bytes);
    }
}

TEST(OutboxPieces, KeepHeaderFieldsInOrderAndSpelling)
{
    const HTTPHeaders headers{{"X-b", "1:2,\r\n"}, {"accept", ""}, {"A", "\xff"}};

    const auto kept = detail::headersFromData(detail::dataFromHeaders(headers));

    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(std::vector(kept->begin(), kept->end()), std::vector(headers.begin(), headers.end()));
    EXPECT_THAT(detail::headersFromData(Data()), Optional(HTTPHeaders()));
}

TEST(OutboxPieces, OfAnOddNumberAreNoHeaderFields)
{
    Data data;
    detail::appendText(data, "name");

    EXPECT_EQ(detail::headersFromData(data), std::nullopt);
}

TEST(OutboxPieces, KeepABodyOfBytesAndFiles)
{
    const TemporaryFolder folder;
    detail::OutboxBodyWriter writer;
    writer.append("<");
    writer.appendFile(folder.file("a", "file"));
    writer.append("");
    writer.append(">");

    auto body = detail::bodyFromData(writer.content());

    EXPECT_EQ(writer.length(), 6u);
    ASSERT_TRUE(body.has_value());
    EXPECT_EQ(textOf(*std::move(body)), "<file>");
}

TEST(OutboxPieces, KeepAnEmptyBody)
{
    const detail::OutboxBodyWriter writer;

    EXPECT_EQ(detail::bodyFromData(writer.content())->length(), 0u);
}

TEST(OutboxPieces, AreNoBodyWhenSomethingIsMissing)
{
    const auto isBody = [](std::string_view text) {
        return detail::bodyFromData(std::as_bytes(std::span(text))).has_value();
    };

    EXPECT_TRUE(isBody("1:b,1:x,"));
    EXPECT_FALSE(isBody("1:b,"));
    EXPECT_FALSE(isBody("1:x,1:x,"));
    EXPECT_FALSE(isBody("1:f,2:/a,1:1,1:1,"));
    EXPECT_FALSE(isBody("1:f,2:/a,1:1,1:x,1:1,"));
    EXPECT_FALSE(isBody("nothing"));
}
