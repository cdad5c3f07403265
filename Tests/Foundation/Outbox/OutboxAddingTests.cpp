#include "Orrenby/Foundation/Outbox/Outbox.hpp"

#include "Orrenby/Foundation/Outbox/OutboxError.hpp"
#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Tests/Foundation/Outbox/OutboxParts.hpp"
#include "Tests/Foundation/Requests/RequestParts.hpp"
#include "Tests/Support/TemporaryFolder.hpp"
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>

using namespace orrenby;
using namespace orrenby::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;

namespace {

/// The kind of refusal; nothing when the request is taken.
std::optional<OutboxError::Kind> refusalOf(
    Outbox& outbox, const URLRequest& request, const OutboxOptions& options = {})
{
    try {
        outbox.add(request, options);
        return std::nullopt;
    } catch (const OutboxError& error) {
        return error.kind();
    }
}

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(OutboxAdding, IsSavedTogetherWithTheChangeThatCausesIt)
{
    //! [Putting a request in]
    const auto model = NSManagedObjectModel::make(
        1, {{.name = "Note", .attributes = {{.name = "text"}}}, Outbox::entity(), Outbox::bodyEntity()});
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model));
    Outbox outbox(context);

    context->insert("Note")->setValue("text", "level rising");
    outbox.add(URLRequest("https://fieldbook.example/notes"_url) | using_(HTTPMethod::post)
        | encoding({{"text", "level rising"}}));
    context->save(); // both or neither
    //! [Putting a request in]

    const auto other = besides(context);
    EXPECT_THAT(other->fetch({.entity = "Note"}), SizeIs(1));
    EXPECT_EQ(Outbox(other).counts(), (OutboxCounts{.pending = 1}));
}

TEST(OutboxAdding, IsNotSavedByItself)
{
    const auto context = outboxContext();
    Outbox outbox(context);

    outbox.add(requestNamed("a"));

    EXPECT_TRUE(context->hasChanges());
    EXPECT_THAT(namesOf(outbox.entries()), ElementsAre("a"));
    EXPECT_THAT(Outbox(besides(context)).entries(), IsEmpty());
    context->rollback();
    EXPECT_THAT(outbox.entries(), IsEmpty());
}

TEST(OutboxAdding, KeepsTheSameKeyOnlyOnce)
{
    Outbox outbox(outboxContext());
    const auto request = requestNamed("a");
    //! [Putting a request in once]
    const auto first = outbox.add(request, {.key = "note 7"});
    const auto second = outbox.add(request, {.key = "note 7"});

    EXPECT_TRUE(first.isNew);
    EXPECT_FALSE(second.isNew);
    EXPECT_EQ(second.entry, first.entry);
    //! [Putting a request in once]
    outbox.context()->save();
    EXPECT_EQ(outbox.add(request, {.key = "note 7"}).entry, first.entry);
    EXPECT_TRUE(outbox.add(request, {.key = "note 8"}).isNew);
    EXPECT_TRUE(outbox.add(request, {.key = ""}).isNew);
    EXPECT_FALSE(outbox.add(request, {.key = ""}).isNew);
}

TEST(OutboxAdding, WithoutAKeyKeepsEqualRequestsEach)
{
    Outbox outbox(outboxContext());

    outbox.add(requestNamed("a"));
    outbox.add(requestNamed("a"));

    EXPECT_THAT(namesOf(outbox.entries()), ElementsAre("a", "a"));
}

TEST(OutboxAdding, LeavesARequestOfTheSameKeyAsItIs)
{
    Outbox outbox(outboxContext());
    const auto entry = outbox.add(requestNamed("first"), {.key = "k"}).entry;
    outbox.context()->save();
    EXPECT_TRUE(outbox.giveUp(entry, "refused"));

    const auto again = outbox.add(requestNamed("second"), {.key = "k"});

    EXPECT_EQ(nameOf(again.entry), "first");
    EXPECT_EQ(again.entry->state(), OutboxState::GivenUp);
}

TEST(OutboxAdding, TakesAKeyAgainAfterItWasDelivered)
{
    Outbox outbox(outboxContext());
    outbox.add(requestNamed("first"), {.key = "k"});
    outbox.context()->save();
    outbox.finish(outbox.take());

    EXPECT_TRUE(outbox.add(requestNamed("second"), {.key = "k"}).isNew);
}

TEST(OutboxAdding, FindsKeysByAllTheirBytes)
{
    using namespace std::string_literals;
    Outbox outbox(outboxContext());

    EXPECT_TRUE(outbox.add(requestNamed("a"), {.key = "k"}).isNew);
    EXPECT_TRUE(outbox.add(requestNamed("a"), {.key = "K"}).isNew);
    EXPECT_TRUE(outbox.add(requestNamed("a"), {.key = "k\0x"s}).isNew);
    outbox.context()->save();
    EXPECT_FALSE(Outbox(besides(outbox.context())).add(requestNamed("a"), {.key = "k\0x"s}).isNew);
}

TEST(OutboxAdding, IntoAChildContextIsKeptByTheSaveOfItsParent)
{
    const auto context = outboxContext();
    const auto child = make<NSManagedObjectContext>(context);
    const URLRequest request = requestNamed("a") | addingHeader("Accept", "text/plain");

    Outbox(child).add(request);
    child->save();
    context->save();

    EXPECT_EQ(Outbox(besides(context)).next()->request(), request);
}

TEST(OutboxAdding, GivesAnIdempotencyKeyThatStaysTheSame)
{
    const CountedNames names;
    Outbox outbox(outboxContext());
    outbox.add(requestNamed("a"), {.addsIdempotencyKey = true});
    outbox.context()->save();

    const auto first = outbox.take();
    EXPECT_THAT(first->request().httpHeader("Idempotency-Key"), Optional(counted(1)));
    outbox.retry(first, Date::distantPast(), "no answer");
    EXPECT_THAT(outbox.take()->request().httpHeader("idempotency-key"), Optional(counted(1)));
}

TEST(OutboxAdding, KeepsAnIdempotencyKeyThatTheRequestHas)
{
    Outbox outbox(outboxContext());

    const auto entry = outbox
                           .add(requestNamed("a") | addingHeader("idempotency-key", "mine"),
                               {.addsIdempotencyKey = true})
                           .entry;

    EXPECT_THAT(entry->request().httpHeader("Idempotency-Key"), Optional(std::string("mine")));
}

TEST(OutboxAdding, RefusesAnAddressWithoutScheme)
{
    Outbox outbox(outboxContext());

    EXPECT_EQ(refusalOf(outbox, URLRequest(""_url)), OutboxError::Kind::NoAddress);
    EXPECT_EQ(refusalOf(outbox, URLRequest("/notes"_url)), OutboxError::Kind::NoAddress);
    EXPECT_EQ(refusalOf(outbox, URLRequest("//host/notes"_url)), OutboxError::Kind::NoAddress);
    EXPECT_FALSE(outbox.context()->hasChanges());
}

TEST(OutboxAdding, RefusesMoreThanOneBody)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", "x");
    const auto file = HTTPBodyFile{.path = path, .mimetype = "text/plain"};
    const auto part = OutboxPart{.key = "a", .contentType = "text/plain", .data = dataFromText("x")};
    auto request = requestNamed("a");
    request.setHTTPBody(Data());
    Outbox outbox(outboxContext());

    const auto several = OutboxError::Kind::SeveralBodies;
    EXPECT_EQ(refusalOf(outbox, request, {.file = file}), several);
    EXPECT_EQ(refusalOf(outbox, request, {.parts = {part}}), several);
    EXPECT_EQ(refusalOf(outbox, requestNamed("a"), {.file = file, .parts = {part}}), several);
    EXPECT_FALSE(outbox.context()->hasChanges());
}

TEST(OutboxAdding, RefusesAPartThatIsBothOrNeither)
{
    Outbox outbox(outboxContext());
    const auto both = OutboxPart{.key = "a", .path = "a", .data = Data()};
    const auto neither = OutboxPart{.key = "a"};

    EXPECT_EQ(refusalOf(outbox, requestNamed("a"), {.parts = {both}}), OutboxError::Kind::SeveralBodies);
    EXPECT_EQ(refusalOf(outbox, requestNamed("a"), {.parts = {neither}}), OutboxError::Kind::SeveralBodies);
}

TEST(OutboxAdding, RefusesTimesThatAreNoNumbers)
{
    Outbox outbox(outboxContext());
    auto request = requestNamed("a");
    request.setTimeoutInterval(noNumber);

    EXPECT_EQ(refusalOf(outbox, request), OutboxError::Kind::NoNumber);
    EXPECT_EQ(
        refusalOf(outbox, requestNamed("a"), {.notBefore = Date(noNumber)}), OutboxError::Kind::NoNumber);
}

TEST(OutboxAdding, RefusesAFileThatIsNotThere)
{
    const TemporaryFolder folder;
    Outbox outbox(outboxContext());

    const auto outcome = outbox.tryAdd(requestNamed("a"), {.file = HTTPBodyFile{.path = folder.file("a")}});

    EXPECT_THROW(outcome.unwrap(), BodyStreamError);
    EXPECT_THROW(
        outbox.add(requestNamed("a"), {.file = HTTPBodyFile{.path = folder.file("a")}}), BodyStreamError);
    EXPECT_THROW(
        outbox.add(requestNamed("a"), {.parts = {{.key = "a", .path = folder.file("")}}}), BodyStreamError);
    EXPECT_FALSE(outbox.context()->hasChanges());
}

TEST(OutboxAdding, TakesAsManyRequestsAsItMay)
{
    Outbox outbox(outboxContext(), {.maximumCount = 2});
    outbox.add(requestNamed("a"), {.key = "k"});
    outbox.context()->save();
    outbox.add(requestNamed("b"));

    EXPECT_EQ(refusalOf(outbox, requestNamed("c")), OutboxError::Kind::Full);
    EXPECT_EQ(outbox.add(requestNamed("a"), {.key = "k"}).isNew, false); // takes no room
    outbox.context()->save();
    outbox.finish(outbox.take());
    EXPECT_EQ(refusalOf(outbox, requestNamed("c")), std::nullopt);
}

TEST(OutboxAdding, CountsWhatWasGivenUp)
{
    Outbox outbox(outboxContext(), {.maximumCount = 1});
    addSaved(outbox, {"a"});
    outbox.giveUp(outbox.next(), "refused");

    EXPECT_EQ(refusalOf(outbox, requestNamed("b")), OutboxError::Kind::Full);
}

TEST(OutboxAdding, TakesNothingWithALimitOfZeroOrLess)
{
    Outbox none(outboxContext(), {.maximumCount = 0});
    Outbox less(outboxContext(), {.maximumCount = -1});

    EXPECT_EQ(refusalOf(none, requestNamed("a")), OutboxError::Kind::Full);
    EXPECT_EQ(refusalOf(less, requestNamed("a")), OutboxError::Kind::Full);
}

TEST(OutboxAdding, TakesBodiesUpToTheirLimit)
{
    Outbox outbox(outboxContext(), {.maximumBodyLength = 4});
    auto request = requestNamed("a");

    request.setHTTPBody(dataFromText("1234"));
    EXPECT_EQ(refusalOf(outbox, request), std::nullopt);
    request.setHTTPBody(dataFromText("12345"));
    EXPECT_EQ(refusalOf(outbox, request), OutboxError::Kind::BodyTooLarge);
}

TEST(OutboxAdding, DoesNotCountFilesAmongTheBytesItKeeps)
{
    const TemporaryFolder folder;
    const auto path = folder.file("a", std::string(100'000, 'x'));
    Outbox outbox(outboxContext(), {.maximumBodyLength = 10'000});

    const auto entry = outbox.add(requestNamed("a"), {.file = HTTPBodyFile{.path = path}}).entry;

    EXPECT_EQ(entry->bodyLength(), 100'000);
}

TEST(OutboxAdding, GivesTheFailureInsteadOfThrowingIt)
{
    Outbox outbox(outboxContext());

    EXPECT_TRUE(outbox.tryAdd(requestNamed("a")).unwrap().isNew);
    const auto outcome = outbox.tryAdd(URLRequest("/a"_url));
    ASSERT_TRUE(outcome.isFailure());
    EXPECT_EQ(outcome.error()->cast<OutboxError>()->kind(), OutboxError::Kind::NoAddress);
}

TEST(OutboxAddingDeath, NeedsTheEntitiesInTheModel)
{
    const auto model = NSManagedObjectModel::make(1, {{.name = "Note", .attributes = {{.name = "text"}}}});
    const auto context = make<NSManagedObjectContext>(PersistentStore::open(model));

    EXPECT_DEATH(Outbox{context}, "The model has no entities of an outbox: file Foundation/Outbox");
}
