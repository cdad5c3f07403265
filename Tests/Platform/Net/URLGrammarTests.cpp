#include "Orrenby/Platform/Net/URLGrammar.hpp"

#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Text/RegularExpression.hpp"
#include <gmock/gmock.h>
#include <random>
#include <string>

using namespace orrenby;

namespace {

/// RFC 3986, appendix A, rule by rule.
std::string grammar()
{
    const std::string escape = "%[0-9A-Fa-f]{2}";
    const std::string unreserved = "A-Za-z0-9\\-._~";
    const std::string delimiters = "!$&'()*+,;=";
    const auto one = [&](const std::string& also) {
        return "(?:[" + unreserved + delimiters + also + "]|" + escape + ")";
    };
    const auto pchar = one(":@");

    const std::string h16 = "[0-9A-Fa-f]{1,4}";
    const std::string octet = "(?:25[0-5]|2[0-4][0-9]|1[0-9]{2}|[1-9][0-9]|[0-9])";
    const auto ls32 = "(?:" + h16 + ":" + h16 + "|" + octet + "(?:\\." + octet + "){3})";
    const auto groups = [&](const char* count) { return "(?:" + h16 + ":)" + count; };
    const auto upTo = [&](const char* count) { return "(?:(?:" + h16 + ":)" + count + h16 + ")?"; };
    const auto version6 = "(?:" + groups("{6}") + ls32 + "|::" + groups("{5}") + ls32 + "|" + upTo("{0,0}")
        + "::" + groups("{4}") + ls32 + "|" + upTo("{0,1}") + "::" + groups("{3}") + ls32 + "|"
        + upTo("{0,2}") + "::" + groups("{2}") + ls32 + "|" + upTo("{0,3}") + "::" + groups("{1}") + ls32
        + "|" + upTo("{0,4}") + "::" + ls32 + "|" + upTo("{0,5}") + "::" + h16 + "|" + upTo("{0,6}") + "::)";
    const auto future = "[vV][0-9A-Fa-f]+\\.[" + unreserved + delimiters + ":]+";
    const auto host = "(?:\\[(?:" + version6 + "|" + future + ")\\]|" + one("") + "*)";
    const auto authority = "(?:" + one(":") + "*@)?" + host + "(?::[0-9]*)?";

    const auto segments = "(?:/" + pchar + "*)*";
    const auto underHost = "//" + authority + segments;
    const auto absolute = "/(?:" + pchar + "+" + segments + ")?";
    const auto hierarchy = "(?:" + underHost + "|" + absolute + "|" + pchar + "+" + segments + "|)";
    const auto relative = "(?:" + underHost + "|" + absolute + "|" + one("@") + "+" + segments + "|)";
    const auto rest = "(?:" + pchar + "|[/?])*";
    return "(?:[A-Za-z][A-Za-z0-9+\\-.]*:" + hierarchy + "|" + relative + ")(?:\\?" + rest + ")?(?:#" + rest
        + ")?";
}

} // namespace

TEST(URLGrammar, GivesTheVerdictOfTheWrittenGrammar)
{
    const RegularExpression judge(grammar());
    constexpr std::string_view pieces[] = {"http:", "//", "/", "?", "#", "@", ":", "[", "]", "[::1]",
        "[1:2:3:4:5:6:7:8]", "[1::", "::", ":1", "1.2.3.4", ".256", "[v1.a:b]", "a", "B", "9", "f", "-", ".",
        "..", "_", "~", "%", "%2", "%41", "%zz", "!", "$", "&", "'", "(", ")", "*", "+", ",", ";", "=", " ",
        "\"", "<", "\\", "^", "`", "{", "|", "\x7F", "\n", "é", "80", "x:", "1a:", "//h"};
    const auto seed = std::random_device()();
    std::mt19937 random(seed);

    int accepted = 0;
    for (int round = 0; round < 60'000; ++round) {
        // Half of the texts are made of signs that are allowed somewhere.
        const auto choices = round % 2 == 0 ? std::size(pieces) : std::size_t(28);
        std::string text;
        for (auto count = random() % 9; count > 0; --count)
            text += pieces[random() % choices];
        const bool isURL = URL::make(text).has_value();

        ASSERT_EQ(isURL, judge.matches(text)) << text << ", seed " << seed;
        accepted += isURL ? 1 : 0;
    }
    EXPECT_GT(accepted, 5'000);
}

TEST(URLGrammar, GivesTheVerdictOfTheWrittenGrammarOnAddresses)
{
    const RegularExpression judge(grammar());
    constexpr std::string_view pieces[] = {":", ":", ":", "::", "1", "f0", "ABCD", "00001", "0", "1.2.3.4",
        "01.2.3.4", "1.2.3", "g", "%25", "."};
    const auto seed = std::random_device()();
    std::mt19937 random(seed);

    int accepted = 0;
    for (int round = 0; round < 60'000; ++round) {
        std::string text = "//[";
        // Groups and colons in turn make an address more often than chance does.
        const auto count = 1 + random() % 16;
        for (std::size_t index = 0; index < count; ++index)
            text += round % 2 == 0 ? pieces[random() % std::size(pieces)]
                                   : pieces[index % 2 == 0 ? 4 + random() % 2 : random() % 4];
        text += "]";
        const bool isURL = URL::make(text).has_value();

        ASSERT_EQ(isURL, judge.matches(text)) << text << ", seed " << seed;
        accepted += isURL ? 1 : 0;
    }
    EXPECT_GT(accepted, 1'000);
}
