#include "Orrenby/Foundation/SafeSetObject.hpp"

#include "Orrenby/Platform/Objects/NSNull.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <string>

using namespace orrenby;
using ::testing::IsEmpty;

TEST(SafeSetObject, SetsWhatIsThere)
{
    //! [Setting what is there]
    const std::optional<std::string> nickname = "Ines";
    const std::optional<std::string> title;
    Dictionary person;

    safeSetObject(person, nickname, "nickname");
    safeSetObject(person, title, "title");

    EXPECT_EQ(describe(person), R"(["nickname": "Ines"])");
    //! [Setting what is there]
}

TEST(SafeSetObject, ReplacesAValueInItsPlace)
{
    Dictionary members = {{"a", 1}, {"b", 2}};

    safeSetObject(members, 3, "a");

    EXPECT_EQ(describe(members.begin()->value), "3");
    EXPECT_EQ(members.size(), 2U);
}

TEST(SafeSetObject, DoesNothingWithoutAnObject)
{
    const Dictionary before = {{"a", 1}};
    Dictionary members = before;

    safeSetObject(members, std::nullopt, "a");
    safeSetObject(members, nullptr, "a");
    safeSetObject(members, Ref<std::string>(), "a");
    safeSetObject(members, static_cast<const char*>(nullptr), "a");
    safeSetObject(members, std::optional<Any>(), "a");
    safeSetObject(members, std::optional<Ref<std::string>>(Ref<std::string>()), "a");

    EXPECT_EQ(members, before);
}

TEST(SafeSetObject, DoesNothingWithoutAKey)
{
    Dictionary members;

    safeSetObject(members, 1, std::nullopt);
    safeSetObject(members, 1, nullptr);
    safeSetObject(members, 1, std::optional<std::string>());
    safeSetObject(members, 1, static_cast<const char*>(nullptr));
    safeSetObject(members, std::nullopt, std::nullopt);

    EXPECT_THAT(members, IsEmpty());
}

TEST(SafeSetObject, SetsANullMarker)
{
    Dictionary members = {{"a", 1}};

    safeSetObject(members, NSNull{}, "a");
    safeSetObject(members, Any(), "b");

    EXPECT_EQ(members, (Dictionary{{"a", NSNull{}}, {"b", NSNull{}}}));
}

TEST(SafeSetObject, TakesTheEmptyTextAsAKey)
{
    Dictionary members;

    safeSetObject(members, 1, "");

    EXPECT_EQ(members, (Dictionary{{"", 1}}));
}

TEST(SafeSetObject, MovesAnRvalue)
{
    auto object = std::make_shared<const int>(7);
    const std::weak_ptr<const int> watched = object;
    Dictionary members;

    safeSetObject(members, std::move(object), "a");

    EXPECT_EQ(watched.use_count(), 1);
}

TEST(SafeSetObject, TakesKeysOfAnyKind)
{
    AnyEntries entries = {{1, "one"}, {NSNull{}, "null"}};

    safeSetObject(entries, "first", 1);
    safeSetObject(entries, "marker", NSNull{});
    safeSetObject(entries, "third", "3");
    safeSetObject(entries, std::nullopt, 4);
    safeSetObject(entries, "fifth", std::nullopt);

    EXPECT_EQ(entries, (AnyEntries{{1, "first"}, {NSNull{}, "marker"}, {"3", "third"}}));
}

TEST(SafeSetObject, SetsTheFirstOfEqualKeys)
{
    AnyEntries entries = {{"a", 1}, {"a", 2}};

    safeSetObject(entries, 3, "a");

    EXPECT_EQ(entries, (AnyEntries{{"a", 3}, {"a", 2}}));
}
