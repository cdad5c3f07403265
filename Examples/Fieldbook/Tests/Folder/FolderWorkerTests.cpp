#include "Examples/Fieldbook/Folder/FolderWorker.hpp"

#include "Examples/Fieldbook/Folder/Samples.hpp"
#include "Orrenby/Utilities/Log/CaptureHandler.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace fieldbook;
using ::testing::ElementsAre;
namespace fs = std::filesystem;

std::string reportOf(const std::string& title)
{
    return R"({"title": ")" + title + R"(", "place": "p", "observer": "o", "severity": "low"})";
}

constexpr auto noJSON = "No valid JSON: Unexpected text at line 1, column 1";

Report reportNamed(const std::string& title) { return {title, "p", "o", Severity::low, {}}; }

/// A worker on a folder of its own. `news` is what it told since somebody looked.
class FolderWorkerTest : public ::testing::Test {
protected:
    FolderWorkerTest()
    {
        fs::remove_all(outer.path());
        fs::create_directories(folder);
    }

    void put(const std::string& file, const std::string& text) const
    {
        std::ofstream(folder / file, std::ios::binary) << text;
    }

    void start()
    {
        worker = orrenby::make<FolderWorker>(session);
        subscription = worker->news().sink([this](const auto& payload) {
            if (const auto* element = payload.asValue())
                news.push_back(*element);
            else
                failure = *payload.asError();
        });
        worker->start();
        loop.drain();
    }

    std::vector<FeedNews> takeNews() { return std::exchange(news, {}); }

    TemporaryCopy outer{FIELDBOOK_BUNDLE "/Reports"};
    fs::path folder = outer.path() / "reports";
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, folder, Course::watch};
    orrenby::Ref<FolderWorker> worker;
    std::vector<FeedNews> news;
    std::optional<FolderLost> failure;
    orrenby::Streams::AnyCancellable subscription;
};

TEST_F(FolderWorkerTest, TellsWhatIsInTheFolderInTheOrderOfNames)
{
    put("b.json", reportOf("two"));
    put("a.json", reportOf("one"));
    put("c.json", "?");
    put("notes.txt", "no report");
    put(".hidden.json", reportOf("hidden"));

    start();

    EXPECT_THAT(takeNews(),
        ElementsAre(FeedNews(Opened{folder.string()}), FeedNews(Added{"a.json", reportNamed("one")}),
            FeedNews(Added{"b.json", reportNamed("two")}), FeedNews(Unreadable{"c.json", noJSON}),
            FeedNews(Scanned{3})));
}

TEST_F(FolderWorkerTest, FollowsAFileThroughItsLife)
{
    //! [Following a folder]
    start();
    takeNews();

    put("a.json", reportOf("one"));
    loop.drain();
    put("a.json", reportOf("two"));
    loop.drain();
    put("a.json", "");
    loop.drain();
    put("a.json", reportOf("three"));
    loop.drain();
    fs::remove(folder / "a.json");
    loop.drain();

    EXPECT_THAT(takeNews(),
        ElementsAre(FeedNews(Added{"a.json", reportNamed("one")}),
            FeedNews(Changed{"a.json", reportNamed("two")}),
            FeedNews(Unreadable{"a.json", "No valid JSON: Unexpected end of the text at line 1, column 1"}),
            FeedNews(Added{"a.json", reportNamed("three")}),
            FeedNews(Removed{"a.json", reportNamed("three")})));
    //! [Following a folder]
}

TEST_F(FolderWorkerTest, TellsNothingOfAFileThatSaysTheSame)
{
    put("a.json", reportOf("one"));
    put("b.json", "?");
    start();
    takeNews();

    put("a.json", reportOf("one"));
    put("b.json", "?");
    loop.drain();

    EXPECT_THAT(takeNews(), ElementsAre());
}

TEST_F(FolderWorkerTest, WaitsUntilAWriterIsDone)
{
    start();
    takeNews();

    auto file = std::ofstream(folder / "a.json");
    const auto text = reportOf("half");
    file << text.substr(0, 10) << std::flush;
    loop.drain();
    EXPECT_THAT(takeNews(), ElementsAre());

    file << text.substr(10);
    file.close();
    loop.drain();
    EXPECT_THAT(takeNews(), ElementsAre(FeedNews(Added{"a.json", reportNamed("half")})));
}

TEST_F(FolderWorkerTest, SeesFilesThatAreMovedInRenamedAndMovedOut)
{
    start();
    takeNews();
    std::ofstream(outer.path() / "x") << reportOf("one");

    fs::rename(outer.path() / "x", folder / "a.json");
    loop.drain();
    fs::rename(folder / "a.json", folder / "b.json");
    loop.drain();
    fs::rename(folder / "b.json", outer.path() / "x");
    loop.drain();

    EXPECT_THAT(takeNews(),
        ElementsAre(FeedNews(Added{"a.json", reportNamed("one")}),
            FeedNews(Removed{"a.json", reportNamed("one")}), FeedNews(Added{"b.json", reportNamed("one")}),
            FeedNews(Removed{"b.json", reportNamed("one")})));
}

TEST_F(FolderWorkerTest, SeesLinksThatAppear)
{
    std::ofstream(outer.path() / "x") << reportOf("one");
    start();
    takeNews();

    fs::create_hard_link(outer.path() / "x", folder / "a.json");
    fs::create_symlink(outer.path() / "x", folder / "b.json");
    loop.drain();

    EXPECT_THAT(takeNews(),
        ElementsAre(
            FeedNews(Added{"a.json", reportNamed("one")}), FeedNews(Added{"b.json", reportNamed("one")})));
}

TEST_F(FolderWorkerTest, TakesFoldersAndPipesAndLargeFilesAsUnreadable)
{
    fs::create_directory(folder / "a.json");
    ASSERT_EQ(::mkfifo((folder / "b.json").c_str(), 0600), 0);
    put("c.json", reportOf("large") + std::string(1024 * 1024, ' '));

    start();

    EXPECT_THAT(takeNews(),
        ElementsAre(FeedNews(Opened{folder.string()}), FeedNews(Unreadable{"a.json", "not a regular file"}),
            FeedNews(Unreadable{"b.json", "not a regular file"}),
            FeedNews(Unreadable{"c.json", "larger than 1048576 bytes"}), FeedNews(Scanned{3})));
}

TEST_F(FolderWorkerTest, LogsOneWarningForEachUnreadableFile)
{
    const auto log = orrenby::Log::CaptureHandler();
    orrenby::Log::onEvent(log);
    put("a.json", R"({"title": "t"})");
    start();

    put("a.json", R"({"title": "t"})");
    loop.drain();

    EXPECT_THAT(log.messages(orrenby::Log::Level::warning),
        ElementsAre("a.json: line 1, column 1: No value under the key \"place\""));
}

TEST_F(FolderWorkerTest, TakesAFileThatIsWrittenAnewAtOnceAsChanged)
{
    put("a.json", reportOf("one"));
    start();
    takeNews();

    fs::remove(folder / "a.json");
    put("a.json", reportOf("two"));
    loop.drain();

    EXPECT_THAT(takeNews(), ElementsAre(FeedNews(Changed{"a.json", reportNamed("two")})));
}

TEST_F(FolderWorkerTest, LooksAtEverythingAfterMoreChangesThanTheSystemNotes)
{
    const auto log = orrenby::Log::CaptureHandler();
    orrenby::Log::onEvent(log);
    put("b.json", reportOf("two"));
    start();
    takeNews();

    // Files of other names take their place in the queue, too. It holds 16,384 by default.
    auto limit = std::size_t(0);
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    for (std::size_t count = 0; count <= limit / 2; ++count) {
        put("notes.txt", "");
        fs::remove(folder / "notes.txt");
    }
    fs::remove(folder / "b.json");
    put("a.json", reportOf("one"));
    loop.drain();

    EXPECT_THAT(takeNews(),
        ElementsAre(
            FeedNews(Removed{"b.json", reportNamed("two")}), FeedNews(Added{"a.json", reportNamed("one")})));
    EXPECT_EQ(log.count(orrenby::Log::Level::info), 1U);
}

TEST_F(FolderWorkerTest, FailsWhenTheFolderIsRemoved)
{
    put("a.json", reportOf("one"));
    start();
    takeNews();

    fs::remove_all(folder);
    loop.drain();

    EXPECT_THAT(takeNews(), ElementsAre(FeedNews(Removed{"a.json", reportNamed("one")})));
    EXPECT_EQ(failure, FolderLost{"it was removed or moved"});
}

TEST_F(FolderWorkerTest, FailsWhenTheFolderIsMoved)
{
    start();

    fs::rename(folder, outer.path() / "elsewhere");
    loop.drain();

    EXPECT_EQ(failure, FolderLost{"it was removed or moved"});
}

TEST_F(FolderWorkerTest, FailsWhenThereIsNoFolder)
{
    fs::remove(folder);

    start();

    EXPECT_EQ(failure, FolderLost{"No such file or directory"});
}

TEST_F(FolderWorkerTest, TellsNothingOnceItIsStopped)
{
    start();
    takeNews();

    worker->stop();
    put("a.json", reportOf("one"));
    loop.drain();

    EXPECT_THAT(takeNews(), ElementsAre());
}

TEST_F(FolderWorkerTest, TellsEverythingAnewWhenItIsStartedAgain)
{
    put("a.json", reportOf("one"));
    start();
    takeNews();

    worker->stop();
    worker->start();
    loop.drain();

    EXPECT_THAT(takeNews(), ElementsAre(FeedNews(Added{"a.json", reportNamed("one")}), FeedNews(Scanned{1})));
}

TEST_F(FolderWorkerTest, MayBeStoppedByWhoeverReceivesItsNews)
{
    put("a.json", reportOf("one"));
    put("b.json", reportOf("two"));
    worker = orrenby::make<FolderWorker>(session);
    subscription = worker->news().sink([this](const auto& payload) {
        news.push_back(*payload.asValue());
        if (std::holds_alternative<Added>(news.back()))
            worker->stop();
    });

    worker->start();
    loop.drain();

    EXPECT_THAT(takeNews(),
        ElementsAre(FeedNews(Opened{folder.string()}), FeedNews(Added{"a.json", reportNamed("one")})));
}

} // namespace
