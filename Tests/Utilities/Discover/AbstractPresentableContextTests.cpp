#include "Orrenby/Utilities/Discover/AbstractPresentableContext.hpp"

#include "Tests/Support/DiscoverParts.hpp"
#include <gmock/gmock.h>
#include <string>

using namespace orrenby;
using orrenby::testing::Diary;
using orrenby::testing::DiaryWorker;
using orrenby::testing::SilentAnalytics;
using ::testing::ElementsAre;

namespace {

/// A presentable without default value.
class Title {
public:
    explicit Title(std::string text)
        : m_text(std::move(text))
    {}
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

class TitledContext : public AbstractPresentableContext<SilentAnalytics, Title> {
public:
    TitledContext(Diary& diary, Title title)
        : AbstractPresentableContext(std::move(title), Workers(), make<SilentAnalytics>())
        , m_diary(&diary)
    {}
    ~TitledContext() override { m_diary->push_back(presentable().text() + " gone"); }

protected:
    void willResignActive() override { m_diary->push_back(presentable().text() + " resigns"); }

private:
    Diary* m_diary;
};

TEST(AbstractPresentableContext, KeepsWhatItsFlowShows)
{
    //! [Presenting a value]
    class ProfileContext : public AbstractPresentableContext<SilentAnalytics, std::string> {
    public:
        using AbstractPresentableContext::AbstractPresentableContext;
    };

    const auto context = make<ProfileContext>("Ada", Workers(), make<SilentAnalytics>());
    const std::string shown = context->presentable();
    //! [Presenting a value]

    EXPECT_EQ(shown, "Ada");
}

TEST(AbstractPresentableContext, IsAContextInEverythingElse)
{
    auto diary = Diary();
    const auto a = make<DiaryWorker>(diary, "A");
    const auto x = make<DiaryWorker>(diary, "X");
    const auto context = make<AbstractPresentableContext<DiaryWorker, int>>(7, Workers{a}, x);

    context->activate();
    context->deactivate();

    EXPECT_EQ(context->presentable(), 7);
    EXPECT_EQ(context->analytics(), x);
    EXPECT_THAT(context->workers(), ElementsAre(a, x));
    EXPECT_THAT(diary, ElementsAre("A started", "X started", "A stops", "X stops"));
}

TEST(AbstractPresentableContext, ShowsItsValueUntilItsVeryEnd)
{
    auto diary = Diary();
    auto context = make<TitledContext>(diary, Title("Feed"));
    context->activate();

    context.reset();

    EXPECT_THAT(diary, ElementsAre("Feed resigns", "Feed gone"));
}

TEST(AbstractPresentableContextDeathTest, HasNoFormWithoutAPresentable)
{
    using TitleContext = AbstractPresentableContext<SilentAnalytics, Title>;

    EXPECT_DEATH((void)make<TitleContext>(Workers(), make<SilentAnalytics>()),
        "Fatal error: Use of unimplemented initializer 'init\\(workers:analytics:\\)' for class "
        "'Orrenby.AbstractPresentableContext': file Utilities/Discover");
}

TEST(AbstractPresentableContextDeathTest, ReportsTheMissingPresentableBeforeUnfitAnalytics)
{
    struct Plain {};

    EXPECT_DEATH((void)(make<AbstractPresentableContext<Plain, int>>(Workers(), std::make_shared<Plain>())),
        "Use of unimplemented initializer");
}

} // namespace
