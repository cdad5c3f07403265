#include "Orrenby/Platform/Text/EmailPatternMismatch.hpp"

#include "Orrenby/Platform/Text/EmailPattern.hpp"
#include "Tests/Support/EmailTexts.hpp"
#include <array>
#include <gmock/gmock.h>
#include <sstream>
#include <string>
#include <vector>

using namespace orrenby;
using namespace std::string_literals;
using orrenby::testing::EmailTexts;
using Piece = EmailPatternPiece;

namespace {

struct Case {
    std::string text;
    std::size_t position;
    std::string sentence;
};

void expectAll(Piece piece, const std::vector<Case>& cases)
{
    for (const auto& [text, position, sentence] : cases) {
        const auto found = emailPatternMismatch(text);
        EXPECT_EQ(found, (EmailPatternMismatch{piece, position, sentence})) << text;
    }
}

/// Whether an address can begin with the text: one of these ends makes it whole.
bool canBeCompleted(const std::string& text)
{
    static constexpr std::array<std::string_view, 16> ends{"", "a@b.co", "@b.co", "\"@b.co", "a\"@b.co",
        "b.co", "co", ".co", "[1.2.3.4]", "1.2.3.4]", ".2.3.4]", ".3.4]", ".4]", "x:y]", ":y]", "]"};
    for (const auto before : {"", "a", "4", "3.4", "2.3.4"})
        for (const auto end : ends)
            if (matchesEmailPattern(text + before + std::string(end)))
                return true;
    return false;
}

} // namespace

TEST(EmailPatternMismatch, TellsWhy)
{
    //! [Asking why]
    const auto mismatch = emailPatternMismatch("ran ger@hut.example.com");

    ASSERT_TRUE(mismatch.has_value());
    EXPECT_EQ(mismatch->piece, EmailPatternPiece::LocalPart);
    EXPECT_EQ(mismatch->position, 3U);
    EXPECT_EQ(mismatch->sentence, "A space may not stand in the local part.");
    //! [Asking why]
}

TEST(EmailPatternMismatch, IsNothingForAnAddress)
{
    for (const auto text :
        {"a@b.co", R"("a@b\""@b.co)", "a@MaiL.example.COM", "a@[1.2.3.4]", "a@[1.2.3.x:\\ ]]"})
        EXPECT_EQ(emailPatternMismatch(text), std::nullopt) << text;
}

TEST(EmailPatternMismatch, ShowsInTheLocalPart)
{
    expectAll(Piece::LocalPart,
        {{"", 0, "The address is empty."}, {"@b.co", 0, "There is nothing before the \"@\"."},
            {"a", 1, "The \"@\" is missing."}, {"a.", 2, "The \"@\" is missing."},
            {".a@b.co", 0, "The local part begins with a dot."},
            {"a..b@b.co", 2, "Two dots stand side by side in the local part."},
            {"a.@b.co", 1, "The local part ends with a dot."},
            {"a(b@b.co", 1, "\"(\" may not stand in the local part."},
            {"a\"b\"@b.co", 1, "A quotation mark may not stand in the local part."}});
}

TEST(EmailPatternMismatch, ShowsBetweenQuotationMarks)
{
    expectAll(Piece::QuotedLocalPart,
        {{"\"a", 2, "The quotation mark is not closed."}, {"\"a\\", 3, "The quotation mark is not closed."},
            {"\"a\\\"", 4, "The quotation mark is not closed."}, {"\"a\"", 3, "The \"@\" is missing."},
            {"\"a\"b@b.co", 3, "Behind the closing quotation mark stands only the \"@\"."},
            {"\"a b\"@b.co", 2, "A space stands between quotation marks only behind a \"\\\"."},
            {"\"a\tb\"@b.co", 2,
                "The control character U+0009 stands between quotation marks only behind a \"\\\"."},
            {"\"\\\n\"@b.co", 2, "The control character U+000A may not stand between quotation marks."},
            {"\"\u00E9\"@b.co", 1, "\"\u00E9\" may not stand between quotation marks."},
            {"\"\0\"@b.co"s, 1, "The control character U+0000 may not stand between quotation marks."}});
}

TEST(EmailPatternMismatch, ShowsInTheDomain)
{
    const std::string inside
        = "Between the ends of a label before the last stand only the letters from a to z, digits and \"-\".";
    expectAll(Piece::Domain,
        {{"a@", 2, "There is nothing behind the \"@\"."}, {"a@b", 3, "The domain has no dot."},
            {"a@b.", 3, "The domain ends with a dot."}, {"a@.co", 2, "The domain begins with a dot."},
            {"a@b..co", 4, "Two dots stand side by side in the domain."},
            {"a@-b.co", 2, "A label of the domain begins with \"-\"."},
            {"a@b-.co", 3, "A label of the domain ends with \"-\"."},
            {"a@b.co-", 6, "A label of the domain ends with \"-\"."},
            {"a@b@c.co", 3, "\"@\" may not stand in the domain."},
            {"a@b.co ", 6, "A space may not stand in the domain."}, {"a@MAIL.co", 3, inside},
            {"a@MAIL", 3, inside}, {"a@MAI L.co", 3, inside}, {"a@x.mAIl.co", 5, inside},
            {"a@m\u00E9l.co", 3, inside}});
}

TEST(EmailPatternMismatch, ShowsInAnAddressLiteral)
{
    expectAll(Piece::AddressLiteral,
        {{"a@[", 3, "A number of the address literal is missing."},
            {"a@[]", 3, "A number of the address literal is missing."},
            {"a@[1..3.4]", 5, "A number of the address literal is missing."},
            {"a@[1.2.3.]", 9, "A number of the address literal is missing."},
            {"a@[256.0.0.1]", 3, "A number of the address literal is above 255."},
            {"a@[1.2.3.256]", 9, "A number of the address literal is above 255."},
            {"a@[1.2.3.0004]", 9, "A number of the address literal has more than three digits."},
            {"a@[1.2.3]", 8, "An address literal has four numbers with dots between them."},
            {"a@[1.2", 6, "An address literal has four numbers with dots between them."},
            {"a@[1.x]", 5, "\"x\" may not stand in the numbers of an address literal."},
            {"a@[1x]", 4, "\"x\" may not stand in the numbers of an address literal."},
            {"a@[1.2.3.4", 10, "The address literal is not closed with \"]\"."},
            {"a@[1.2.3.4.5]", 10, "\".\" may not stand in the last number or tag of an address literal."},
            {"a@[1.2.3.4]x", 11, "Nothing may stand behind the address literal."},
            {"a@[1.2.3.:y]", 9, "There is no tag before the \":\" of the address literal."},
            {"a@[1.2.3.x-:y]", 10, "The tag of the address literal ends with \"-\"."},
            {"a@[1.2.3.x]", 10, "Behind the tag of the address literal stands a \":\" and a text."},
            {"a@[1.2.3.x:]", 11, "There is no text behind the \":\" of the address literal."},
            {"a@[1.2.3.x:", 11, "The address literal is not closed with \"]\"."},
            {"a@[1.2.3.x:]y", 13, "The address literal is not closed with \"]\"."},
            {"a@[1.2.3.x:y z]", 12, "A space stands in the text of an address literal only behind a \"\\\"."},
            {"a@[1.2.3.x:\u00E9]", 11, "\"\u00E9\" may not stand in the text of an address literal."}});
}

TEST(EmailPatternMismatch, NamesWhatCannotBeSeenByItsNumber)
{
    expectAll(Piece::LocalPart,
        {{"a\u202Eb@b.co", 1, "The character U+202E may not stand in the local part."},
            {"\U0001F600@b.co", 0, "The character U+1F600 may not stand in the local part."},
            {"a\x1B[1m@b.co", 1, "The control character U+001B may not stand in the local part."},
            {"a\xFF@b.co", 1, "A byte that is no UTF-8 may not stand in the local part."},
            {"a\xC3", 1, "A byte that is no UTF-8 may not stand in the local part."}});
}

TEST(EmailPatternMismatch, CountsBytes)
{
    expectAll(Piece::LocalPart, {{"\u0436\u0443\u043A ", 6, "A space may not stand in the local part."}});
    expectAll(Piece::Domain,
        {{"\U00020000@\u0434\u043C", 9, "The domain has no dot."},
            {"a@b.\u4E2D-", 7, "A label of the domain ends with \"-\"."}});
}

TEST(EmailPatternMismatch, AgreesWithThePatternOnRandomTexts)
{
    for (std::uint64_t seed = 0; seed < 20'000; ++seed) {
        const auto text = EmailTexts(seed).next();

        ASSERT_EQ(emailPatternMismatch(text).has_value(), !matchesEmailPattern(text)) << seed << ": " << text;
    }
}

TEST(EmailPatternMismatch, StandsBehindWhatCanBeTheBeginningOfAnAddress)
{
    for (std::uint64_t seed = 0; seed < 5'000; ++seed) {
        const auto text = EmailTexts(seed).next();
        const auto mismatch = emailPatternMismatch(text);

        if (!mismatch)
            continue;
        ASSERT_LE(mismatch->position, text.size()) << seed << ": " << text;
        ASSERT_TRUE(canBeCompleted(text.substr(0, mismatch->position)))
            << seed << ": " << text << " " << *mismatch;
    }
}

TEST(EmailPatternMismatch, IsFoundInLongTexts)
{
    const auto many = [](char character) { return std::string(5'000'000, character); };
    const std::vector<std::pair<std::string, std::size_t>> texts{{many('a'), 5'000'000},
        {"a@b." + many('A') + ".", 5}, {"\"" + many('\\'), 5'000'001},
        {"a@[1.2.3.a:" + many('\\'), 5'000'011}};

    for (const auto& [text, position] : texts) {
        EXPECT_FALSE(matchesEmailPattern(text));
        EXPECT_EQ(emailPatternMismatch(text)->position, position) << text.substr(0, 20);
    }
}

TEST(EmailPatternMismatch, PrintsItsSentence)
{
    std::ostringstream stream;

    stream << *emailPatternMismatch("a b@c.de");

    EXPECT_EQ(stream.str(), emailPatternMismatch("a b@c.de")->sentence);
}

TEST(EmailPatternMismatch, HashesByAllThatIsCompared)
{
    const std::hash<EmailPatternMismatch> hash;
    const EmailPatternMismatch mismatch{Piece::Domain, 3, "A dot is missing."};

    EXPECT_EQ(hash(mismatch), hash({Piece::Domain, 3, "A dot is missing."}));
    EXPECT_NE(hash(mismatch), hash({Piece::LocalPart, 3, "A dot is missing."}));
    EXPECT_NE(hash(mismatch), hash({Piece::Domain, 4, "A dot is missing."}));
    EXPECT_NE(hash(mismatch), hash({Piece::Domain, 3, "A dot."}));
}
