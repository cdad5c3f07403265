#include "Examples/Fieldbook/Report/ReportDecoding.hpp"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace fieldbook;

const Report ford = {"Bridge under water", "Lower Marrow", "Ines Calder", Severity::high, "Since noon."};

std::optional<Report> decoded(std::string_view text) { return decodedReport(text).value(); }

std::string problemOf(std::string_view text) { return decodedReport(text).error().value_or("none"); }

/// A report whose title stands in the text like this.
std::string reportTitled(const std::string& title)
{
    return R"({"title": )" + title + R"(, "place": "p", "observer": "o", "severity": "low"})";
}

/// A report whose body stands in the text like this.
std::string reportSaying(const std::string& body)
{
    return R"({"title": "t", "place": "p", "observer": "o", "severity": "low", "body": )" + body + "}";
}

TEST(ReportDecoding, ReadsTheMembersOfAReport)
{
    EXPECT_EQ(decoded(R"({
        "title": "Bridge under water",
        "place": "Lower Marrow",
        "observer": "Ines Calder",
        "severity": "high",
        "body": "Since noon."
    })"),
        ford);
}

TEST(ReportDecoding, TakesMembersInAnyOrderAndIgnoresOthers)
{
    EXPECT_EQ(decoded(R"({"severity": "high", "weather": "wet", "body": "Since noon.", "observer":
        "Ines Calder", "title": "Bridge under water", "place": "Lower Marrow"})"),
        ford);
}

TEST(ReportDecoding, TakesAByteOrderMark)
{
    EXPECT_EQ(decoded("\xEF\xBB\xBF" + reportTitled(R"("t")")), (Report{"t", "p", "o", Severity::low, {}}));
}

TEST(ReportDecoding, TakesAReportWithoutBody)
{
    const auto expected = Report{"t", "p", "o", Severity::low, {}};

    EXPECT_EQ(decoded(reportTitled(R"("t")")), expected);
    EXPECT_EQ(decoded(reportSaying("null")), expected);
}

TEST(ReportDecoding, TakesEverySeverity)
{
    for (const auto severity : {Severity::low, Severity::medium, Severity::high})
        EXPECT_EQ(decoded(R"({"title": "t", "place": "p", "observer": "o", "severity": ")"
                      + std::string(nameOf(severity)) + R"("})"),
            (Report{"t", "p", "o", severity, {}}));
}

TEST(ReportDecoding, SaysWhereATextIsNoJSON)
{
    EXPECT_EQ(problemOf(""), "No valid JSON: Unexpected end of the text at line 1, column 1");
    EXPECT_EQ(problemOf("{\"title\": \"t\",\n \"pla"),
        "No valid JSON: Unexpected end of the text at line 2, column 6");
    EXPECT_EQ(problemOf("Title: t\n"), "No valid JSON: Unexpected text at line 1, column 1");
}

TEST(ReportDecoding, SaysWhichMemberIsMissing)
{
    EXPECT_EQ(problemOf("\n  {\"title\": \"t\", \"place\": \"p\", \"severity\": \"low\"}"),
        "line 2, column 3: No value under the key \"observer\"");
}

TEST(ReportDecoding, NamesThePlaceOfAValueOfAWrongKind)
{
    EXPECT_EQ(problemOf("[]"), "line 1, column 1: Expected Dictionary<String, Any> but found a list");
    EXPECT_EQ(problemOf(reportTitled("214")), "title, line 1, column 11: Expected String but found a number");
    EXPECT_EQ(problemOf(reportTitled("null")), "title, line 1, column 11: Expected String but found null");
}

TEST(ReportDecoding, TellsWhichSeveritiesThereAre)
{
    EXPECT_EQ(
        problemOf("{\"title\": \"t\", \"place\": \"p\", \"observer\": \"o\",\n\"severity\": \"grave\"}"),
        "severity, line 2, column 13: No severity (low, medium or high) has the raw value \"grave\"");
    EXPECT_EQ(problemOf(R"({"title": "t", "place": "p", "observer": "o", "severity": "High"})"),
        "severity, line 1, column 59: No severity (low, medium or high) has the raw value \"High\"");
}

TEST(ReportDecoding, RefusesAnEmptyText)
{
    constexpr auto message = "title, line 1, column 11: Expected a text but found an empty one";

    EXPECT_EQ(problemOf(reportTitled(R"("")")), message);
    EXPECT_EQ(problemOf(reportTitled(R"(" \t ")")), message);
    EXPECT_EQ(problemOf(reportSaying(R"("\n")")),
        "body, line 1, column 74: Expected a text but found an empty one");
}

TEST(ReportDecoding, RefusesWhatATerminalWouldObey)
{
    for (const auto& [text, character] : {std::pair{R"("\u001B[2J")", "U+001B"}, {R"("\u009B2J")", "U+009B"},
             {"\"\xC2\x9B\"", "U+009B"}, {"\"a \xE2\x80\xAE b\"", "U+202E"}, {R"("a\rb")", "U+000D"},
             {R"("a\u0000b")", "U+0000"}, {R"("a\tb")", "U+0009"}, {R"("a\nb")", "U+000A"}})
        EXPECT_EQ(problemOf(reportTitled(text)),
            "title, line 1, column 11: Expected a text that can be shown but found " + std::string(character)
                + " in it");
}

TEST(ReportDecoding, TakesLinesAndTabsInTheBodyAlone)
{
    EXPECT_EQ(decoded(reportSaying(R"("one\n\n\ttwo 🦉")")),
        (Report{"t", "p", "o", Severity::low, "one\n\n\ttwo 🦉"}));
    EXPECT_EQ(problemOf(reportSaying(R"("bell \u0007")")),
        "body, line 1, column 74: Expected a text that can be shown but found U+0007 in it");
}

TEST(ReportDecoding, QuotesNothingThatATerminalWouldObey)
{
    const auto problem = problemOf(
        "{\"title\": \"t\", \"place\": \"p\", \"observer\": \"o\", \"severity\": \"\xC2\x9B"
        "2J\xE2\x80\xAE\"}");

    EXPECT_EQ(problem.find("\xC2\x9B"), std::string::npos) << problem;
    EXPECT_EQ(problem.find("\xE2\x80\xAE"), std::string::npos) << problem;
}

TEST(ReportDecoding, RefusesMalformedUTF8)
{
    EXPECT_EQ(problemOf(reportTitled("\"\xC0\xAF\"")).substr(0, 14), "No valid JSON:");
}

TEST(ReportDecoding, TakesEachReportOfAListOnItsOwn)
{
    //! [Taking what can be read of a list]
    const auto list = decodedReports(R"([
        {"title": "Rope frayed", "place": "Quay", "observer": "Nils", "severity": "low"},
        {"title": "Crane stuck", "place": "Quay", "observer": "Nils", "severity": "grave"},
        7
    ])")
                          .unwrap();

    EXPECT_EQ(list.reports,
        (std::vector<std::optional<Report>>{
            Report{"Rope frayed", "Quay", "Nils", Severity::low, {}}, std::nullopt, std::nullopt}));
    EXPECT_EQ(list.problems,
        (std::vector<std::string>{
            "Index 1 > severity, line 3, column 83: No severity (low, medium or high) has the raw value \"grave\"",
            "Index 2, line 4, column 9: Expected Dictionary<String, Any> but found a number"}));
    //! [Taking what can be read of a list]
}

TEST(ReportDecoding, HasNothingToSayOfAListThatIsGood)
{
    EXPECT_EQ(decodedReports("[]").unwrap(), DecodedReports());
    EXPECT_EQ(
        decodedReports('[' + reportTitled("\"Rope\"") + ']').unwrap().problems, std::vector<std::string>());
}

TEST(ReportDecoding, RefusesWhatIsNoList)
{
    EXPECT_EQ(decodedReports("{}").error(), "line 1, column 1: Expected Array<Report> but found an object");
    EXPECT_TRUE(decodedReports("[{").isFailure());
    EXPECT_TRUE(decodedReports("").isFailure());
}

} // namespace
