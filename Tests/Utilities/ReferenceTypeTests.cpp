#include "Orrenby/Utilities/ReferenceType.hpp"

#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <gmock/gmock.h>
#include <memory>
#include <optional>
#include <string>

using namespace orrenby;

namespace {

struct Left {
    virtual ~Left() = default;
};
struct Right {
    virtual ~Right() = default;
};
struct Both : Left, Right {};

} // namespace

TEST(ReferenceType, IsEveryReference)
{
    EXPECT_TRUE(ReferenceType<Ref<int>>);
    EXPECT_TRUE(ReferenceType<Ref<const int>>);
    EXPECT_TRUE(ReferenceType<const Ref<int>>);
    EXPECT_TRUE(ReferenceType<std::shared_ptr<Left>>);
}

TEST(ReferenceType, IsEveryHandle)
{
    EXPECT_TRUE(ReferenceType<Streams::AnyCancellable>);
    EXPECT_TRUE((ReferenceType<Streams::AnyPublisher<int, Never>>));
    EXPECT_TRUE((ReferenceType<Streams::PassthroughSubject<int, Never>>));
    EXPECT_TRUE((ReferenceType<Streams::CurrentValueSubject<int, Never>>));
}

TEST(ReferenceType, IsNoValue)
{
    EXPECT_FALSE(ReferenceType<int>);
    EXPECT_FALSE(ReferenceType<std::string>);
    EXPECT_FALSE(ReferenceType<int*>);
    EXPECT_FALSE(ReferenceType<WeakRef<int>>);
    EXPECT_FALSE(ReferenceType<std::unique_ptr<int>>);
    EXPECT_FALSE(ReferenceType<std::optional<Ref<int>>>);
    EXPECT_FALSE(ReferenceType<void>);
}

TEST(ReferenceType, HasOneIdentityThroughEveryInterface)
{
    const auto object = std::make_shared<Both>();

    const auto identity = detail::sharedIdentity(object);

    EXPECT_EQ(detail::sharedIdentity(Ref<Left>(object)), identity);
    EXPECT_EQ(detail::sharedIdentity(Ref<Right>(object)), identity);
    EXPECT_NE(detail::sharedIdentity(std::make_shared<Both>()), identity);
}

TEST(ReferenceType, HasTheIdentityOfWhatHandlesShare)
{
    const auto subject = Streams::PassthroughSubject<int, Never>();
    const auto copy = subject;
    const auto other = Streams::PassthroughSubject<int, Never>();
    const auto subscription = subject.eraseToAnyPublisher().sink([](const auto&) {});
    const auto sameSubscription = subscription;

    EXPECT_EQ(detail::sharedIdentity(subject), detail::sharedIdentity(copy));
    EXPECT_NE(detail::sharedIdentity(subject), detail::sharedIdentity(other));
    EXPECT_EQ(detail::sharedIdentity(subscription), detail::sharedIdentity(sameSubscription));
    EXPECT_EQ(detail::sharedIdentity(Streams::AnyCancellable()), ObjectIdentifier());
}
