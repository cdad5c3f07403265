#include "Examples/Fieldbook/Terminal/CommandWorker.hpp"

#include "Examples/Fieldbook/Terminal/Descriptor.hpp"
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;

class CommandWorkerTest : public ::testing::Test {
protected:
    CommandWorkerTest()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        reader = Descriptor(ends[0]);
        keyboard = Descriptor(ends[1]);
        worker = orrenby::make<CommandWorker>(session, reader.number());
        worker->start();
    }

    void type(std::string_view text)
    {
        EXPECT_EQ(::write(keyboard.number(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
        loop.drain();
    }

    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, "folder", Course::watch};
    Descriptor reader;
    Descriptor keyboard;
    orrenby::Ref<CommandWorker> worker;
    std::vector<std::string> commands;
    orrenby::Streams::AnyCancellable handle = session.commands.asPublisher().bind(
        [this](const std::string& command) { commands.push_back(command); });
};

TEST_F(CommandWorkerTest, PassesLinesOnWithoutBlanksAtTheirEnds)
{
    type("upload\n  sort place \n");

    EXPECT_THAT(commands, ElementsAre("upload", "sort place"));
}

TEST_F(CommandWorkerTest, WaitsForTheEndOfALine)
{
    type("upl");
    EXPECT_THAT(commands, ElementsAre());

    type("oad\n");
    EXPECT_THAT(commands, ElementsAre("upload"));
}

TEST_F(CommandWorkerTest, PassesNoEmptyLineOn)
{
    type("\n \n\n");

    EXPECT_THAT(commands, ElementsAre());
}

TEST_F(CommandWorkerTest, CutsALineThatNobodyTypes)
{
    type(std::string(5'000, 'x'));
    for (auto i = 0; i < 30; ++i)
        loop.drain();
    type("\n");

    ASSERT_EQ(commands.size(), 1U);
    EXPECT_EQ(commands[0].size(), 1'024U);
}

TEST_F(CommandWorkerTest, ListensNoMoreAtTheEndOfInput)
{
    keyboard = {};
    loop.drain();

    loop.drain();

    EXPECT_THAT(commands, ElementsAre());
}

} // namespace
