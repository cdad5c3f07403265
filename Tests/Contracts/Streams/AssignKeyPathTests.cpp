#include "Tests/Support/StreamEngines.hpp"

#include "Orrenby/Platform/Observing/KeyPath.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include "Orrenby/Platform/Observing/Property.hpp"
#include "Orrenby/Utilities/Observers/KeyPathObserver.hpp"
#include <memory>
#include <optional>

using namespace orrenby;
using orrenby::testing::Trouble;
using ::testing::ElementsAre;

namespace {

class Gauge : public ObservableObject {
public:
    Property<int, "level"> level{*this};
    Property<std::optional<int>, "limit"> limit{*this};
};

class Panel : public ObservableObject {
public:
    Property<Ref<Gauge>, "gauge"> gauge{*this};
};

class BigPanel : public Panel {};

class AssignKeyPathContract : public orrenby::testing::BothEngines {};

TEST_P(AssignKeyPathContract, WritesEveryValueAlongThePathAndTellsObservers)
{
    //! [Assigning along a key path]
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    const auto panel = std::make_shared<Panel>();
    panel->gauge = std::make_shared<Gauge>();
    std::vector<int> levels;
    const auto observer = make<KeyPathObserver<Panel>>(panel);
    observer->observe(
        keyPath<&Panel::gauge, &Gauge::level>(), [&](const auto& level) { levels.push_back(level.value()); });

    const auto handle = numbers.asPublisher().assign(keyPath<&Panel::gauge, &Gauge::level>(), panel);
    numbers.send(3);
    numbers.send(4);

    EXPECT_THAT(levels, ElementsAre(0, 3, 4));
    //! [Assigning along a key path]
}

TEST_P(AssignKeyPathContract, DiscardsValuesBehindAnEmptyReference)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    const auto panel = std::make_shared<Panel>();
    const auto handle = numbers.asPublisher().assign(keyPath<&Panel::gauge, &Gauge::level>(), panel);

    numbers.send(3);
    panel->gauge = std::make_shared<Gauge>();
    const auto levelBefore = panel->gauge.get()->level.get();
    numbers.send(4);

    EXPECT_EQ(levelBefore, 0);
    EXPECT_EQ(panel->gauge.get()->level, 4);
}

TEST_P(AssignKeyPathContract, DiscardsFailures)
{
    const auto numbers = Streams::PassthroughSubject<int, Trouble>();
    const auto gauge = std::make_shared<Gauge>();
    const auto handle = numbers.asPublisher().assign(keyPath<&Gauge::level>(), gauge);

    numbers.send(3);
    numbers.send(Trouble{1});

    EXPECT_EQ(gauge->level, 3);
}

TEST_P(AssignKeyPathContract, DiscardsValuesOnceTheObjectIsGoneAndDoesNotKeepIt)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    auto gauge = std::make_shared<Gauge>();
    const std::weak_ptr<Gauge> weakGauge = gauge;
    const auto handle = numbers.asPublisher().assign(keyPath<&Gauge::level>(), gauge);

    gauge.reset();
    numbers.send(3);

    EXPECT_TRUE(weakGauge.expired());
}

TEST_P(AssignKeyPathContract, StopsWithItsHandle)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    const auto gauge = std::make_shared<Gauge>();
    auto handle = std::optional(numbers.asPublisher().assign(keyPath<&Gauge::level>(), gauge));

    numbers.send(3);
    handle.reset();
    numbers.send(4);

    EXPECT_EQ(gauge->level, 3);
}

TEST_P(AssignKeyPathContract, WritesIntoAnOptionalAndAlongAnInheritedPath)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    const auto panel = std::make_shared<BigPanel>();
    panel->gauge = std::make_shared<Gauge>();

    const auto handle = numbers.asPublisher().assign(keyPath<&BigPanel::gauge, &Gauge::limit>(), panel);
    numbers.send(3);

    EXPECT_EQ(panel->gauge.get()->limit.get(), 3);
}

TEST_P(AssignKeyPathContract, WritesThroughAGetterAndSetter)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    const auto gauge = std::make_shared<Gauge>();
    const auto path = keyPath<Gauge>([](const Gauge& subject) { return subject.level / 2; },
        [](Gauge& subject, int half) { subject.level = half * 2; });

    const auto handle = numbers.asPublisher().assign(path, gauge);
    numbers.send(3);

    EXPECT_EQ(gauge->level, 6);
}

TEST_P(AssignKeyPathContract, WritesAPropertyThatIsGivenAsAMember)
{
    const auto numbers = Streams::PassthroughSubject<int, Never>();
    const auto gauge = std::make_shared<Gauge>();

    const auto handle = numbers.asPublisher().assign(&Gauge::level, gauge);
    numbers.send(3);

    EXPECT_EQ(gauge->level, 3);
}

INSTANTIATE_ON_BOTH_ENGINES(AssignKeyPathContract);

} // namespace
