#include "Orrenby/Platform/Objects/Trace.hpp"

#include "Orrenby/Platform/Objects/Object.hpp"
#include <gmock/gmock.h>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::string>& reports()
{
    static std::vector<std::string> list;
    return list;
}

void keepReport(const Trace::Event& event)
{
    reports().push_back(std::string(event.subject) + " from " + std::string(event.site.function()));
}

void attach(TraceSite site = TraceSite::current()) { Trace::report(Trace::Kind::Attach, "Part", site); }

class Part : public Lifetime {
    void release() noexcept override {}
};

} // namespace

#ifdef ORRENBY_DIAGNOSTICS

TEST(Trace, ReportsWhoDidWhatAndWhere)
{
    reports().clear();
    Trace::onEvent(keepReport);
    attach();
    const auto part = make<Part>();

    EXPECT_THAT(reports(), ElementsAre("Part from TestBody", "Part from make"));
}

TEST(Trace, ReportsNothingOnceTurnedOff)
{
    reports().clear();
    Trace::onEvent(keepReport);
    Trace::onEvent(nullptr);
    attach();

    EXPECT_THAT(reports(), IsEmpty());
}

#else

static_assert(std::is_empty_v<TraceSite>, "a site costs nothing outside the diagnostic build");

TEST(Trace, ReportsNothingOutsideTheDiagnosticBuild)
{
    reports().clear();
    Trace::onEvent(keepReport);
    attach();
    const auto part = make<Part>();

    EXPECT_THAT(reports(), IsEmpty());
}

TEST(Trace, TakesTheSiteOfACallThatKnowsOne)
{
    const TraceSite site = CallSite("File", 1, "function");
    attach(site);

    EXPECT_THAT(reports(), IsEmpty());
}

#endif
