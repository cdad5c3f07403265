#include "Orrenby/Platform/Objects/Object.hpp"

#include <gmock/gmock.h>
#include <stdexcept>
#include <string>
#include <vector>

using namespace orrenby;
using ::testing::ElementsAre;

namespace {

using Log = std::vector<std::string>;

/// What a library class with a life looks like: its last act calls a hook.
class Activity : public Lifetime {
public:
    explicit Activity(Log& log)
        : m_log(&log)
    {
        note("base made");
    }
    ~Activity() override { note("base gone"); }

protected:
    void note(const std::string& text) const { m_log->push_back(text); }
    virtual void didEnd() { note("base hook"); }

    template <class T> void afterInit(Final<T>) { note("final is " + typeName<T>()); }

private:
    void release() noexcept final
    {
        note("release");
        didEnd();
    }
    template <class T> friend class orrenby::Object;

    Log* m_log;
};

class Download : public Activity {
public:
    Download(Log& log, std::string name)
        : Activity(log)
        , m_name(std::move(name))
    {
        note("derived made");
    }
    ~Download() override { note("derived gone"); }

    const std::string& name() const { return m_name; }

protected:
    void didEnd() override { note(m_name + " hook"); }

private:
    std::string m_name;
};

class Throwing : public Activity {
public:
    explicit Throwing(Log& log)
        : Activity(log)
    {
        throw std::runtime_error("no");
    }
};

class FailingHook : public Activity {
public:
    using Activity::Activity;

protected:
    void didEnd() override { throw std::runtime_error("hook"); }
};

class Watching : public Activity, public std::enable_shared_from_this<Watching> {
public:
    using Activity::Activity;

protected:
    void didEnd() override
    {
        note(weak_from_this().lock() == nullptr ? "no reference left" : "still referred to");
    }
};

class TakesMoveOnly : public Activity {
public:
    TakesMoveOnly(Log& log, std::unique_ptr<int> number)
        : Activity(log)
        , m_number(std::move(number))
    {}
    int number() const { return *m_number; }

private:
    std::unique_ptr<int> m_number;
};

} // namespace

static_assert(std::is_abstract_v<Download>, "only Object<T> closes a class with a life");
static_assert(!std::is_constructible_v<Download, Log&, std::string>);
static_assert(
    !std::is_copy_constructible_v<Object<Download>> && !std::is_move_constructible_v<Object<Download>>);
static_assert(!std::is_copy_assignable_v<Object<Download>>);
static_assert(std::is_final_v<Object<Download>>);

TEST(Object, IsMadeWithMake)
{
    Log log;
    //! [Making an object]
    const Ref<Download> download = make<Download>(log, "picture");
    const Ref<Activity> same = download;
    //! [Making an object]

    EXPECT_EQ(download->name(), "picture");
    EXPECT_EQ(download.use_count(), 2);
}

TEST(Object, RunsTheHooksOfTheMostDerivedClassWhileItIsWhole)
{
    Log log;
    Ref<Activity> download = make<Download>(log, "picture");
    log.clear();

    download.reset();

    EXPECT_THAT(log, ElementsAre("release", "picture hook", "derived gone", "base gone"));
}

TEST(Object, TellsTheFinalClassOnceAllConstructorsRan)
{
    Log log;
    const auto download = make<Download>(log, "picture");

    EXPECT_THAT(log, ElementsAre("base made", "derived made", "final is Download"));
}

TEST(Object, WorksOnTheStack)
{
    Log log;
    {
        const Object<Download> download(log, "picture");
        EXPECT_EQ(download.name(), "picture");
        log.clear();
    }

    EXPECT_THAT(log, ElementsAre("release", "picture hook", "derived gone", "base gone"));
}

TEST(Object, IsReleasedWithTheLastReferenceOnly)
{
    Log log;
    auto first = make<Download>(log, "picture");
    auto second = first;
    log.clear();

    first.reset();
    EXPECT_THAT(log, testing::IsEmpty());
    second.reset();
    EXPECT_EQ(log.size(), 4U);
}

TEST(Object, IsNotReleasedWhenAConstructorThrows)
{
    Log log;

    EXPECT_THROW(static_cast<void>(make<Throwing>(log)), std::runtime_error);
    EXPECT_THAT(log, ElementsAre("base made", "base gone"));
}

TEST(Object, GivesHooksNoReferenceToItself)
{
    Log log;
    make<Watching>(log).reset();

    EXPECT_THAT(log, testing::Contains("no reference left"));
}

TEST(Object, TakesArgumentsThatCanOnlyBeMoved)
{
    Log log;

    EXPECT_EQ(make<TakesMoveOnly>(log, std::make_unique<int>(7))->number(), 7);
}

TEST(Object, TerminatesWhenAHookThrows)
{
    Log log;

    EXPECT_DEATH(make<FailingHook>(log).reset(), "hook");
}

TEST(Object, LeavesWeakReferencesEmptyDuringAndAfterRelease)
{
    Log log;
    auto download = make<Download>(log, "picture");
    const WeakRef<Download> watch = download;
    download.reset();

    EXPECT_TRUE(watch.expired());
}
