#include "Orrenby/Utilities/WeakBox.hpp"

#include "Orrenby/Platform/Objects/Object.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include <atomic>
#include <gmock/gmock.h>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

using namespace orrenby;

namespace {

struct Named {
    std::string name;
};

struct Left {
    virtual ~Left() = default;
    int left = 1;
};
struct Right {
    virtual ~Right() = default;
    int right = 2;
};
struct Both : Left, Right {};

/// Asks the box of itself while it is released.
class Leaving : public AbstractWorker {
public:
    explicit Leaving(std::vector<bool>& answers)
        : m_answers(&answers)
    {}
    void remember(WeakBox<Leaving> box) { m_box = std::move(box); }

protected:
    void willStop() override { m_answers->push_back(m_box->containsObject()); }

private:
    std::vector<bool>* m_answers;
    std::optional<WeakBox<Leaving>> m_box;
};

std::size_t hashOf(const auto& box) { return std::hash<std::decay_t<decltype(box)>>{}(box); }

/// An object at a place that is given, so that two of them can have the same address one after the other.
Ref<int> placed(void* place)
{
    return Ref<int>(new (place) int(1), [](int*) {});
}

} // namespace

TEST(WeakBox, FindsAnEntryByItsObject)
{
    //! [Keying on an object]
    const auto button = std::make_shared<Named>("button");
    std::unordered_map<WeakBox<void>, std::string> titles;

    titles[WeakBox<void>(button)] = "Send";

    EXPECT_EQ(titles[WeakBox<void>(button)], "Send");
    //! [Keying on an object]
}

TEST(WeakBox, GivesTheObjectWhileItLives)
{
    const auto object = std::make_shared<Named>("a");

    const auto box = WeakBox(object);

    EXPECT_EQ(box.object(), object);
    EXPECT_TRUE(box.containsObject());
    EXPECT_EQ(object.use_count(), 1);
}

TEST(WeakBox, IsEmptyOnceTheObjectIsReleased)
{
    auto object = std::make_shared<Named>("a");
    const auto box = WeakBox(object);

    object.reset();

    EXPECT_EQ(box.object(), nullptr);
    EXPECT_FALSE(box.containsObject());
}

TEST(WeakBox, ContainsItsObjectAndNoOther)
{
    const auto object = std::make_shared<Named>("a");
    const auto equal = std::make_shared<Named>("a");
    const auto box = WeakBox(object);

    EXPECT_TRUE(box.contains(object));
    EXPECT_FALSE(box.contains(equal));
    EXPECT_FALSE(box.contains(std::make_shared<int>(1)));
    EXPECT_FALSE(box.contains(Ref<Named>()));
}

TEST(WeakBox, ContainsTheObjectThroughEveryInterface)
{
    const auto object = std::make_shared<Both>();
    const auto box = WeakBox<Left>(object);

    EXPECT_TRUE(box.contains(object));
    EXPECT_TRUE(box.contains(Ref<Left>(object)));
    EXPECT_TRUE(box.contains(Ref<Right>(object)));
}

TEST(WeakBox, ContainsNothingOnceItIsEmpty)
{
    alignas(int) std::byte place[sizeof(int)];
    auto object = placed(place);
    const auto box = WeakBox(object);

    object.reset();
    const auto successor = placed(place);

    EXPECT_FALSE(box.contains(successor));
    EXPECT_FALSE(box.contains(Ref<int>()));
}

TEST(WeakBox, IsEmptyWhileItsObjectIsReleased)
{
    std::vector<bool> answers;
    auto object = make<Leaving>(answers);
    object->remember(WeakBox<Leaving>(object));
    object->start();

    object.reset();

    EXPECT_THAT(answers, ::testing::ElementsAre(false));
}

TEST(WeakBox, KeepsEqualityAndHashAfterItsObject)
{
    auto object = std::make_shared<Named>("a");
    const auto first = WeakBox(object);
    const auto second = WeakBox(object);
    const auto hash = hashOf(first);

    object.reset();

    EXPECT_EQ(first, second);
    EXPECT_EQ(hashOf(first), hash);
    EXPECT_EQ(hashOf(second), hash);
    EXPECT_EQ(first.objectIdentifier(), second.objectIdentifier());
}

TEST(WeakBox, DiffersForEqualButDistinctObjects)
{
    const auto first = std::make_shared<Named>("a");
    const auto second = std::make_shared<Named>("a");

    EXPECT_NE(WeakBox(first), WeakBox(second));
}

TEST(WeakBox, IsTheSameThroughEveryInterface)
{
    const auto object = std::make_shared<Both>();

    const auto left = WeakBox<void>(Ref<Left>(object));
    const auto right = WeakBox<void>(Ref<Right>(object));

    EXPECT_EQ(left, right);
    EXPECT_EQ(hashOf(left), hashOf(right));
}

TEST(WeakBox, DiffersFromThatOfALaterObjectAtTheSameAddress)
{
    alignas(int) std::byte place[sizeof(int)];
    auto object = placed(place);
    const auto box = WeakBox(object);

    object.reset();
    const auto successor = WeakBox(placed(place));

    EXPECT_EQ(box.objectIdentifier(), successor.objectIdentifier());
    EXPECT_NE(box, successor);
}

TEST(WeakBox, DiffersForTwoReferenceCountsOfOneObject)
{
    int object = 1;
    const auto first = Ref<int>(&object, [](int*) {});
    const auto second = Ref<int>(&object, [](int*) {});

    EXPECT_NE(WeakBox(first), WeakBox(second));
    EXPECT_EQ(WeakBox(first).objectIdentifier(), WeakBox(second).objectIdentifier());
    EXPECT_EQ(WeakBox(first).hash(), WeakBox(second).hash());
    EXPECT_TRUE(WeakBox(first).contains(second));
}

TEST(WeakBox, OfAnEmptyReferenceIsEmptyAndEqualToItsLike)
{
    const auto box = WeakBox(Ref<Named>());

    EXPECT_FALSE(box.containsObject());
    EXPECT_EQ(box, WeakBox(Ref<Named>()));
    EXPECT_NE(box, WeakBox(std::make_shared<Named>("a")));
}

TEST(WeakBox, CopiesAndMovesAsAValue)
{
    const auto object = std::make_shared<Named>("a");
    auto box = WeakBox(object);

    auto copy = box;
    const auto moved = std::move(copy);
    box = WeakBox(std::make_shared<Named>("b"));

    EXPECT_TRUE(moved.contains(object));
    EXPECT_FALSE(box.contains(object));
}

TEST(WeakBox, BoxesConstantObjects)
{
    const Ref<const Named> object = std::make_shared<Named>("a");

    const auto box = WeakBox(object);

    EXPECT_EQ(box.object()->name, "a");
    EXPECT_EQ(box, WeakBox<const Named>(std::const_pointer_cast<Named>(object)));
}

TEST(WeakBox, MayBeAskedWhileAnotherThreadReleasesTheObject)
{
    auto object = std::make_shared<Named>("shared");
    const auto box = WeakBox(object);
    std::atomic<int> wrong = 0;
    auto readers = std::vector<std::thread>();
    for (int reader = 0; reader < 2; ++reader)
        readers.emplace_back([&wrong, box] {
            while (const auto held = box.object())
                wrong += held->name != "shared";
        });

    object.reset();
    for (auto& reader : readers)
        reader.join();

    EXPECT_EQ(wrong, 0);
    EXPECT_FALSE(box.containsObject());
}
