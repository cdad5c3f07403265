// E-mail addresses: the pattern, the walk that explains a refusal and ICU's whole-text match have one
// verdict. Before the first input a million texts made by chance are compared, too.

#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Platform/Text/EmailPatternMismatch.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Tests/Support/EmailTexts.hpp"
#include "Tests/Support/ICUEmailPattern.hpp"

using namespace orrenby;

namespace {

void requireOneVerdict(std::string_view text)
{
    static const orrenby::testing::ICUEmailPattern& peer = *new orrenby::testing::ICUEmailPattern();
    const bool isMatch = matchesEmailPattern(text);
    const auto mismatch = emailPatternMismatch(text);
    requireThat(mismatch.has_value() != isMatch);
    requireThat(!mismatch || (mismatch->position <= text.size() && !mismatch->sentence.empty()));
    const auto expected = peer.matches(text);
    requireThat(!expected || *expected == isMatch);
    if (const auto address = EmailAddress::make({.stringValue = std::string(text)}))
        requireThat(isMatch && !address->localPart().empty() && !address->domain().empty());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    orrenby::testing::EmailTexts texts(20'260'101);
    for (int number = 0; number < 1'000'000; ++number)
        requireOneVerdict(texts.next());
    return 0;
}

/// The first byte says whether the others are text or numbers of pieces that the pattern is about.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    std::string text;
    for (std::size_t place = 1; place < size; ++place)
        if (data[0] % 2 == 0)
            text += static_cast<char>(data[place]);
        else
            text += orrenby::testing::emailAtoms[data[place] % orrenby::testing::emailAtoms.size()];
    requireOneVerdict(text);
    return 0;
}
