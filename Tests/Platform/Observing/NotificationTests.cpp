#include "Orrenby/Platform/Observing/Notification.hpp"

#include <gtest/gtest.h>

using namespace orrenby;

namespace {

class Document {
public:
    virtual ~Document() = default;
};
class Titled {
public:
    virtual ~Titled() = default;
};
class Report : public Document, public Titled {};

TEST(Notification, GivesItsSenderAsAnyOfItsClasses)
{
    const auto report = std::make_shared<Report>();
    const auto notification = Notification("Saved", Ref<Titled>(report));

    EXPECT_EQ(notification.object<Titled>(), report);
    EXPECT_EQ(notification.object<Report>(), report);
    EXPECT_EQ(notification.object<Document>(), report);
    EXPECT_EQ(notification.object<std::string>(), nullptr);
}

TEST(Notification, GivesASenderOfAPlainTypeAsThatType)
{
    const auto sender = std::make_shared<int>(3);
    const auto notification = Notification("Saved", sender);

    EXPECT_EQ(notification.object<int>(), sender);
    EXPECT_EQ(notification.object<long>(), nullptr);
}

TEST(Notification, DoesNotGiveAConstantSenderAsAChangeableOne)
{
    const auto sender = std::make_shared<const int>(3);
    const auto notification = Notification("Saved", sender);

    EXPECT_EQ(notification.object<const int>(), sender);
    EXPECT_EQ(notification.object<int>(), nullptr);
}

TEST(Notification, WithoutASenderGivesNone)
{
    EXPECT_EQ(Notification("Saved").object<Report>(), nullptr);
    EXPECT_FALSE(Notification("Saved").sender());
    EXPECT_FALSE(Notification("Saved", nullptr).sender());
    EXPECT_FALSE(Notification("Saved", Ref<Report>()).sender());
}

TEST(Notification, KeepsItsSenderAlive)
{
    auto sender = std::make_shared<int>(3);
    const auto weak = WeakRef<int>(sender);

    {
        const auto notification = Notification("Saved", std::move(sender));
        sender.reset();
        EXPECT_FALSE(weak.expired());
    }

    EXPECT_TRUE(weak.expired());
}

TEST(Notification, IsEqualToOneOfTheSameNameSenderAndContents)
{
    const auto report = std::make_shared<Report>();
    const auto notification = Notification("Saved", Ref<Titled>(report), {{"pages", 3}});

    EXPECT_EQ(notification, Notification("Saved", Ref<Document>(report), {{"pages", 3}}));
    EXPECT_NE(notification, Notification("Closed", report, {{"pages", 3}}));
    EXPECT_NE(notification, Notification("Saved", std::make_shared<Report>(), {{"pages", 3}}));
    EXPECT_NE(notification, Notification("Saved", report));
}

TEST(Notification, PrintsItsNameAndContents)
{
    EXPECT_EQ(Notification("Saved").description(), "Saved");
    EXPECT_EQ(Notification("Saved", nullptr, {{"pages", 3}}).description(), R"(Saved ["pages": 3])");
}

} // namespace
