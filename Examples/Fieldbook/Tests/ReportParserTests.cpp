#include "Examples/Fieldbook/ReportParser.hpp"

#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace {

using namespace fieldbook;

const Report ford = {"Bridge under water", "Lower Marrow", "Ines Calder", Severity::high, "Since noon.\n"};

std::optional<Report> parsed(std::string_view text) { return parseReport(text).value(); }

std::string problemOf(std::string_view text)
{
    const auto problem = parseReport(text).error();
    return problem ? problem->description() : "none";
}

TEST(ReportParser, ReadsHeadersAndBody)
{
    EXPECT_EQ(
        parsed("Title: Bridge under water\nPlace: Lower Marrow\nObserver: Ines Calder\nSeverity: high\n\n"
               "Since noon.\n"),
        ford);
}

TEST(ReportParser, TakesHeadersInAnyOrderAndLetterCase)
{
    EXPECT_EQ(
        parsed("SEVERITY: High\nobserver: Ines Calder\nTitle: Bridge under water\nplace: Lower Marrow\n\n"
               "Since noon.\n"),
        ford);
}

TEST(ReportParser, TakesByteOrderMarkCarriageReturnsAndBlanks)
{
    EXPECT_EQ(parsed("\xEF\xBB\xBFTitle :  Bridge under water \r\nPlace:\tLower Marrow\r\n"
                     "Observer: Ines Calder\r\nSeverity:high\r\n \r\nSince noon.\r\n"),
        ford);
}

TEST(ReportParser, KeepsColonsInValuesAndEmptyLinesInTheBody)
{
    const auto report = parsed(
        "Title: km 3: fence\nPlace: a\nObserver: b\nSeverity: low\n\none\n\nTitle: two");

    EXPECT_EQ(report, (Report{"km 3: fence", "a", "b", Severity::low, "one\n\nTitle: two\n"}));
}

TEST(ReportParser, TakesAReportWithoutBody)
{
    const auto expected = Report{"t", "p", "o", Severity::medium, ""};

    EXPECT_EQ(parsed("Title: t\nPlace: p\nObserver: o\nSeverity: medium"), expected);
    EXPECT_EQ(parsed("Title: t\nPlace: p\nObserver: o\nSeverity: medium\n\n"), expected);
}

TEST(ReportParser, RefusesAnEmptyFile)
{
    EXPECT_EQ(problemOf(""), "the file is empty");
    EXPECT_EQ(problemOf("\xEF\xBB\xBF"), "the file is empty");
}

TEST(ReportParser, NamesTheLineOfTheFirstProblem)
{
    EXPECT_EQ(problemOf("Title: t\nWeather: wet\nSeverity: no\n"), "line 2: unknown header \"Weather\"");
    EXPECT_EQ(problemOf("Title: t\nTitle: u\n"), "line 2: a second \"Title\"");
    EXPECT_EQ(problemOf("Title: t\nPlace:  \n"), "line 2: \"Place\" is empty");
    EXPECT_EQ(problemOf("Title: t\nhello\n"), "line 2: neither a header nor an empty line");
    EXPECT_EQ(problemOf("Title: a\tb\n"), "line 1: a tab within \"Title\"");
    EXPECT_EQ(problemOf("Severity: grave\n"), "line 1: unknown severity \"grave\": low, medium or high");
}

TEST(ReportParser, RefusesAReportThatLacksAHeader)
{
    EXPECT_EQ(problemOf("Title: t\nPlace: p\nSeverity: low\n\nbody\n"), "line 4: \"Observer\" is missing");
    EXPECT_EQ(problemOf("\n"), "line 1: \"Title\" is missing");
}

TEST(ReportParser, RefusesWhatATerminalWouldObey)
{
    EXPECT_EQ(problemOf("Title: \x1B[2J\n"), "line 1: a control character");
    EXPECT_EQ(problemOf("Title: \xC2\x9B"
                        "2J\n"),
        "line 1: a control character");
    EXPECT_EQ(problemOf("Title: \xE2\x80\xAEtxt\n"), "line 1: a control character");
    EXPECT_EQ(problemOf("Title: a\rb\n"), "line 1: a control character");
    EXPECT_EQ(problemOf(std::string_view("Title: a\0b\n", 11)), "line 1: a control character");
}

TEST(ReportParser, LooksAtTheCharactersOfTheBodyToo)
{
    const auto head = std::string("Title: t\nPlace: p\nObserver: o\nSeverity: low\n\n");

    EXPECT_EQ(problemOf(head + "good\tline\nbell \x07\n"), "line 7: a control character");
    EXPECT_EQ(problemOf(head + "\xFF\n"), "line 6: not valid UTF-8");
}

TEST(ReportParser, RefusesMalformedUTF8)
{
    for (const auto* const bytes :
        {"\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF0\x9F"})
        EXPECT_EQ(problemOf("Title: " + std::string(bytes) + "\n"), "line 1: not valid UTF-8");
    EXPECT_EQ(problemOf("Title: \xF0\x9F\xA6\x89\n"), "line 1: \"Place\" is missing");
}

} // namespace
