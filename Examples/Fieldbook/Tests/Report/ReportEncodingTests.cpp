#include "Examples/Fieldbook/Report/ReportEncoding.hpp"

#include "Examples/Fieldbook/Report/ReportDecoding.hpp"
#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include <gtest/gtest.h>

namespace {

using namespace fieldbook;

TEST(ReportEncoding, WritesOneMemberALine)
{
    EXPECT_EQ(encodedReport({"Wasps", "Gate", "Jo", Severity::low, "A nest."}), R"({
  "title" : "Wasps",
  "place" : "Gate",
  "observer" : "Jo",
  "severity" : "low",
  "body" : "A nest."
}
)");
}

TEST(ReportEncoding, LeavesOutABodyThatIsMissing)
{
    EXPECT_EQ(encodedReport({"Wasps", "Gate", "Jo", Severity::high, {}}).find("body"), std::string::npos);
}

TEST(ReportEncoding, WritesDatesAsTimestamps)
{
    const auto text = encodedReport({"Wasps", "Gate", "Jo", Severity::low, {}, orrenby::Date(0)});

    EXPECT_NE(text.find("\"date\" : \"1970-01-01T00:00:00.000Z\""), std::string::npos) << text;
}

TEST(ReportEncoding, GivesWhatDecodingReadsBack)
{
    const auto report = Report{"\"Wasps\" \\ Øye", "Gate", "Jo", Severity::medium,
        "One line.\n\tAnd another one / more.", orrenby::Date(1'772'636'700.25)};

    EXPECT_EQ(decodedReport(encodedReport(report)).unwrap(), report);
}

TEST(ReportEncoding, ThrowsForATextThatIsNoUTF8)
{
    EXPECT_THROW(encodedReport({"\xFF", "Gate", "Jo", Severity::low, {}}), orrenby::EncodingError);
}

} // namespace
