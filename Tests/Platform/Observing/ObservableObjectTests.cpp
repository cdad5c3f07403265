#include "Orrenby/Platform/Observing/ObservableObject.hpp"

#include "Tests/Platform/Observing/ObservingParts.hpp"
#include <gmock/gmock.h>
#include <type_traits>

using namespace orrenby;
using namespace orrenby::tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Has a value that no member declares.
class Counter : public ObservableObject {
public:
    void increment()
    {
        willChangeValue("count");
        ++m_count;
        didChangeValue("count");
    }

protected:
    std::optional<Any> valueForUndefinedKey(std::string_view key) const override
    {
        if (key == "count")
            return Any(m_count);
        return ObservableObject::valueForUndefinedKey(key);
    }

private:
    int m_count = 0;
};

/// Reports changes of two keys around one another.
class Task : public ObservableObject {
public:
    void run(const std::function<void()>& body = [] {})
    {
        willChangeValue("isFinished");
        willChangeValue("isExecuting");
        body();
        didChangeValue("isExecuting");
        didChangeValue("isFinished");
    }
};

} // namespace

TEST(ObservableObject, TellsOfEachChangeOfAKey)
{
    //! [Observing an object by name]
    class Logger : public KeyValueObserver {
    public:
        void observeValue(
            const std::string& keyPath, ObservableObject&, const KeyValueChange& change) override
        {
            lines.push_back(
                keyPath + ": " + change.oldValue->description() + " -> " + change.newValue->description());
        }
        std::vector<std::string> lines;
    };
    Person person;
    const auto logger = std::make_shared<Logger>();

    person.addObserver(logger, "age", {.new_ = true, .old = true});
    person.age = 19;

    EXPECT_THAT(logger->lines, ElementsAre("age: 18 -> 19"));
    //! [Observing an object by name]
}

TEST(ObservableObject, TellsNothingOfOtherKeys)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "age", oldAndNew);

    person.name = "Eva";

    EXPECT_THAT(recorder->told, IsEmpty());
}

TEST(ObservableObject, NamesItselfToTheObserver)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "age");

    person.age = 19;

    EXPECT_THAT(recorder->objects, ElementsAre(&person));
}

TEST(ObservableObject, TellsValuesOnlyToThoseWhoAskedForThem)
{
    Person person;
    const auto neither = makeRecorder();
    const auto onlyNew = makeRecorder();
    const auto onlyOld = makeRecorder();
    person.addObserver(neither, "age");
    person.addObserver(onlyNew, "age", {.new_ = true});
    person.addObserver(onlyOld, "age", {.old = true});

    person.age = 19;

    EXPECT_THAT(neither->told, ElementsAre("age: none -> none"));
    EXPECT_THAT(onlyNew->told, ElementsAre("age: none -> 19"));
    EXPECT_THAT(onlyOld->told, ElementsAre("age: 18 -> none"));
}

TEST(ObservableObject, TellsBeforeTheChangeThoseWhoAskedForIt)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "age", {.new_ = true, .old = true, .prior = true});

    person.age = 19;

    EXPECT_THAT(recorder->told, ElementsAre("age: 18 ->", "age: 18 -> 19"));
}

TEST(ObservableObject, TellsTheOldValueThatHoldsRightBeforeTheChange)
{
    Person person;
    const auto watcher = makeRecorder();
    bool hasMeddled = false;
    const auto meddler = makeRecorder([&](const KeyValueChange&) {
        if (!std::exchange(hasMeddled, true))
            person.age = 50;
    });
    person.addObserver(watcher, "age", oldAndNew);
    person.addObserver(meddler, "age", {.prior = true});

    person.age = 19;

    EXPECT_THAT(watcher->told, ElementsAre("age: 18 -> 50", "age: 50 -> 19"));
}

TEST(ObservableObject, TellsTheInitialValueWhileRegistering)
{
    Person person;
    const auto recorder = makeRecorder();

    person.addObserver(recorder, "age", {.new_ = true, .old = true, .initial = true});

    EXPECT_THAT(recorder->told, ElementsAre("age: none -> 18"));
}

TEST(ObservableObject, CallsObserversInTheOrderOfTheirRegistration)
{
    Person person;
    std::vector<int> calls;
    const auto second = makeRecorder([&](auto&) { calls.push_back(2); });
    const auto first = makeRecorder([&](auto&) { calls.push_back(1); });
    const auto third = makeRecorder([&](auto&) { calls.push_back(3); });
    person.addObserver(first, "age");
    person.addObserver(second, "title");
    person.addObserver(third, "age");

    person.age = 19;

    EXPECT_THAT(calls, ElementsAre(1, 2, 3));
}

TEST(ObservableObject, CallsAnObserverOncePerRegistration)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "age", oldAndNew);
    person.addObserver(recorder, "age", oldAndNew);

    person.age = 19;

    EXPECT_THAT(recorder->told, ElementsAre("age: 18 -> 19", "age: 18 -> 19"));
}

TEST(ObservableObject, RemovesTheLatestRegistrationFirst)
{
    Person person;
    const auto recorder = makeRecorder();
    person.addObserver(recorder, "age", oldAndNew);
    person.addObserver(recorder, "age");

    person.removeObserver(*recorder, "age");
    person.age = 19;

    EXPECT_THAT(recorder->told, ElementsAre("age: 18 -> 19"));
    EXPECT_EQ(person.observerCount(), 1u);
}

TEST(ObservableObject, IgnoresTheRemovalOfWhatIsNotRegistered)
{
    Person person;
    const auto recorder = makeRecorder();
    const auto stranger = makeRecorder();
    person.removeObserver(*recorder, "age");
    person.addObserver(recorder, "age");

    person.removeObserver(*stranger, "age");
    person.removeObserver(*recorder, "name");
    person.removeObserver(*recorder, "");

    EXPECT_EQ(person.observerCount(), 1u);
}

TEST(ObservableObject, FindsValuesByKey)
{
    const Person person;

    EXPECT_EQ(person.valueForKey("age"), Any(18));
    EXPECT_EQ(person.valueForKey("title"), Any("Ada, 18"));
    EXPECT_EQ(person.valueForKey("address"), Any(nullptr));
    EXPECT_EQ(person.valueForKey("height"), std::nullopt);
    EXPECT_EQ(person.valueForKey(""), std::nullopt);
}

TEST(ObservableObject, TellsOfAValueThatNoMemberDeclares)
{
    Counter counter;
    const auto recorder = makeRecorder();
    counter.addObserver(recorder, "count", oldAndNew);

    counter.increment();

    EXPECT_EQ(counter.valueForKey("count"), Any(1));
    EXPECT_THAT(recorder->told, ElementsAre("count: 0 -> 1"));
}

TEST(ObservableObject, TellsOfAnUnknownKeyWithoutValues)
{
    Task task;
    const auto recorder = makeRecorder();
    task.addObserver(recorder, "isFinished", {.new_ = true, .old = true, .initial = true});

    task.run();

    EXPECT_THAT(recorder->told, ElementsAre("isFinished: none -> none", "isFinished: none -> none"));
}

TEST(ObservableObject, TellsOfNestedChangesAsEachIsClosed)
{
    Task task;
    const auto recorder = makeRecorder();
    task.addObserver(recorder, "isFinished", {.prior = true});
    task.addObserver(recorder, "isExecuting", {.prior = true});

    task.run([&] { recorder->told.push_back("change"); });

    EXPECT_THAT(recorder->told,
        ElementsAre("isFinished: none ->", "isExecuting: none ->", "change", "isExecuting: none -> none",
            "isFinished: none -> none"));
}

TEST(ObservableObject, NestsChangesOfOneKey)
{
    Counter counter;
    const auto recorder = makeRecorder();
    counter.addObserver(recorder, "count", oldAndNew);

    counter.willChangeValue("count");
    counter.increment();
    counter.increment();
    counter.didChangeValue("count");

    EXPECT_THAT(recorder->told, ElementsAre("count: 0 -> 1", "count: 1 -> 2", "count: 0 -> 2"));
}

TEST(ObservableObject, IgnoresAChangeThatWasNotAnnounced)
{
    Counter counter;
    const auto recorder = makeRecorder();
    counter.didChangeValue("count");
    counter.addObserver(recorder, "count");

    counter.didChangeValue("count");
    counter.increment();
    counter.didChangeValue("count");

    EXPECT_EQ(recorder->told.size(), 1u);
}

TEST(ObservableObject, DoesNotTellWhoRegistersWhileAChangeIsOpen)
{
    Counter counter;
    const auto early = makeRecorder();
    const auto late = makeRecorder();
    counter.addObserver(early, "count");

    counter.willChangeValue("count");
    counter.addObserver(late, "count");
    counter.didChangeValue("count");

    EXPECT_EQ(early->told.size(), 1u);
    EXPECT_THAT(late->told, IsEmpty());
}

TEST(ObservableObject, DoesNotTellOfAnAnnouncedChangeAfterRemoval)
{
    Counter counter;
    const auto recorder = makeRecorder();
    counter.addObserver(recorder, "count");

    counter.willChangeValue("count");
    counter.removeObserver(*recorder, "count");
    counter.didChangeValue("count");

    EXPECT_THAT(recorder->told, IsEmpty());
}

TEST(ObservableObject, ForgetsAnOpenChangeWithItself)
{
    auto counter = std::make_unique<Counter>();
    const auto recorder = makeRecorder();
    counter->addObserver(recorder, "count", oldAndNew);

    counter->willChangeValue("count");
    counter.reset();

    EXPECT_THAT(recorder->told, IsEmpty());
    EXPECT_EQ(recorder.use_count(), 1);
}

TEST(ObservableObject, ReportsRegistrationsInTheDiagnosticBuildOnly)
{
    static std::vector<std::string> reports;
    Trace::onEvent([](const Trace::Event& event) {
        reports.push_back((event.kind == Trace::Kind::Attach ? "attach " : "detach ")
            + std::string(event.subject) + " in " + std::string(event.site.function()));
    });
    Person person;
    const auto recorder = makeRecorder();

    person.addObserver(recorder, "age");
    person.removeObserver(*recorder, "age");
    person.removeObserver(*recorder, "age");
    Trace::onEvent(nullptr);

#ifdef ORRENBY_DIAGNOSTICS
    EXPECT_THAT(reports, ElementsAre("attach Person in TestBody", "detach Person in TestBody"));
#else
    EXPECT_THAT(reports, IsEmpty());
#endif
}

TEST(ObservableObject, IsNotCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<Person>);
    EXPECT_FALSE(std::is_copy_assignable_v<Person>);
}

TEST(ObservableObjectDeathTest, EndsTheProcessForAPathWithoutKeys)
{
    Person person;
    const auto recorder = makeRecorder();
    constexpr auto message
        = "Fatal error: A key path names keys separated by dots: file Platform/ObservableObject, line";

    EXPECT_DEATH(person.addObserver(recorder, ""), message);
    EXPECT_DEATH(person.addObserver(recorder, ".age"), message);
    EXPECT_DEATH(person.addObserver(recorder, "address..city"), message);
    EXPECT_DEATH(person.addObserver(recorder, "address."), message);
}

TEST(ObservableObjectDeathTest, EndsTheProcessWithoutAnObserver)
{
    Person person;

    EXPECT_DEATH(person.addObserver(nullptr, "age"), "There is no observer to register");
}

TEST(ObservableObjectDeathTest, EndsTheProcessWhenAnObserverThrows)
{
    Person person;
    const auto recorder = makeRecorder([](auto&) { throw 1; });
    person.addObserver(recorder, "age");

    EXPECT_DEATH(person.age = 19, "");
}
