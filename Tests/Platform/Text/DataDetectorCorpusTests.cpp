#include "Tests/Support/DetectorCorpus.hpp"

#include <algorithm>
#include <gmock/gmock.h>
#include <set>

using namespace orrenby;
using namespace orrenby::testing;
using ::testing::Ge;

namespace {

/// What the detector is expected to say: the right findings and the known wrong ones.
std::vector<std::string> expected(const CorpusLine& line)
{
    std::vector<std::string> result;
    for (const auto& finding : line.findings)
        if (finding.mark != CorpusFinding::Mark::Missed)
            result.push_back(finding.description());
    return result;
}

std::vector<std::string> found(std::string_view text)
{
    std::vector<std::string> result;
    for (const auto& finding : detectorFindings(text))
        result.push_back(finding.description());
    return result;
}

} // namespace

TEST(DataDetectorCorpus, HoldsHundredsOfDifferentTexts)
{
    std::set<std::string> texts;
    for (const auto& line : detectorCorpus())
        texts.insert(line.text);

    EXPECT_THAT(texts.size(), Ge(650U));
}

TEST(DataDetectorCorpus, GetsTheVerdictThatStandsBesideEachText)
{
    for (const auto& line : detectorCorpus())
        EXPECT_EQ(found(line.text), expected(line)) << line.file << ":" << line.number << ": " << line.text;
}

TEST(DataDetectorCorpus, MarksAsMissedOnlyWhatTheDetectorMisses)
{
    for (const auto& line : detectorCorpus()) {
        const auto verdict = found(line.text);
        for (const auto& finding : line.findings) {
            const bool isFound = std::ranges::count(verdict, finding.description()) > 0;

            EXPECT_EQ(isFound, finding.mark != CorpusFinding::Mark::Missed)
                << line.file << ":" << line.number << ": " << finding.description();
        }
    }
}

TEST(DataDetectorCorpus, NamesOnlyWhatStandsInTheText)
{
    for (const auto& line : detectorCorpus())
        for (const auto& finding : line.findings)
            EXPECT_THAT(line.text, ::testing::HasSubstr(finding.text)) << line.file << ":" << line.number;
}

TEST(DataDetectorCorpus, GetsTheSameVerdictInsideALongerText)
{
    for (const auto& line : detectorCorpus()) {
        const auto inside = "Before it there is text.\n\n" + line.text + "\n\nAnd behind it, too.";

        EXPECT_EQ(found(inside), expected(line)) << line.file << ":" << line.number << ": " << line.text;
    }
}
