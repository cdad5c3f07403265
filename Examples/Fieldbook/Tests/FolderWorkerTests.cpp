#include "Examples/Fieldbook/FolderWorker.hpp"

#include "Examples/Fieldbook/Samples.hpp"
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
using namespace std::chrono_literals;
using ::testing::ElementsAre;
namespace fs = std::filesystem;

std::string reportOf(const std::string& title)
{
    return "Title: " + title + "\nPlace: p\nObserver: o\nSeverity: low\n";
}

Report parsedReport(const std::string& title) { return {title, "p", "o", Severity::low, ""}; }

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
        turn();
    }

    /// Lets the loop handle everything that has happened so far: what was registered first comes first.
    void turn()
    {
        const auto end = loop.after(0ms, [this] { loop.stop(); });
        loop.run();
    }

    std::vector<FolderNews> takeNews() { return std::exchange(news, {}); }

    TemporaryCopy outer{FIELDBOOK_SAMPLES};
    fs::path folder = outer.path() / "reports";
    EventLoop loop;
    Terminal terminal{-1, false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, folder, Course::watch};
    orrenby::Ref<FolderWorker> worker;
    std::vector<FolderNews> news;
    std::optional<FolderLost> failure;
    orrenby::Streams::AnyCancellable subscription;
};

TEST_F(FolderWorkerTest, TellsWhatIsInTheFolderInTheOrderOfNames)
{
    put("b.report", reportOf("two"));
    put("a.report", reportOf("one"));
    put("c.report", "?");
    put("notes.txt", "no report");
    put(".hidden.report", reportOf("hidden"));

    start();

    EXPECT_THAT(takeNews(),
        ElementsAre(FolderNews(Opened{folder.string()}), FolderNews(Added{"a.report", parsedReport("one")}),
            FolderNews(Added{"b.report", parsedReport("two")}),
            FolderNews(Unreadable{"c.report", {1, "neither a header nor an empty line"}}),
            FolderNews(Scanned{3})));
}

TEST_F(FolderWorkerTest, FollowsAFileThroughItsLife)
{
    //! [Following a folder]
    start();
    takeNews();

    put("a.report", reportOf("one"));
    turn();
    put("a.report", reportOf("two"));
    turn();
    put("a.report", "");
    turn();
    put("a.report", reportOf("three"));
    turn();
    fs::remove(folder / "a.report");
    turn();

    EXPECT_THAT(takeNews(),
        ElementsAre(FolderNews(Added{"a.report", parsedReport("one")}),
            FolderNews(Changed{"a.report", parsedReport("two")}),
            FolderNews(Unreadable{"a.report", {0, "the file is empty"}}),
            FolderNews(Added{"a.report", parsedReport("three")}),
            FolderNews(Removed{"a.report", parsedReport("three")})));
    //! [Following a folder]
}

TEST_F(FolderWorkerTest, TellsNothingOfAFileThatSaysTheSame)
{
    put("a.report", reportOf("one"));
    put("b.report", "?");
    start();
    takeNews();

    put("a.report", reportOf("one"));
    put("b.report", "?");
    turn();

    EXPECT_THAT(takeNews(), ElementsAre());
}

TEST_F(FolderWorkerTest, WaitsUntilAWriterIsDone)
{
    start();
    takeNews();

    auto file = std::ofstream(folder / "a.report");
    file << "Title: half" << std::flush;
    turn();
    EXPECT_THAT(takeNews(), ElementsAre());

    file << "\nPlace: p\nObserver: o\nSeverity: low\n";
    file.close();
    turn();
    EXPECT_THAT(takeNews(), ElementsAre(FolderNews(Added{"a.report", parsedReport("half")})));
}

TEST_F(FolderWorkerTest, SeesFilesThatAreMovedInRenamedAndMovedOut)
{
    start();
    takeNews();
    std::ofstream(outer.path() / "x") << reportOf("one");

    fs::rename(outer.path() / "x", folder / "a.report");
    turn();
    fs::rename(folder / "a.report", folder / "b.report");
    turn();
    fs::rename(folder / "b.report", outer.path() / "x");
    turn();

    EXPECT_THAT(takeNews(),
        ElementsAre(FolderNews(Added{"a.report", parsedReport("one")}),
            FolderNews(Removed{"a.report", parsedReport("one")}),
            FolderNews(Added{"b.report", parsedReport("one")}),
            FolderNews(Removed{"b.report", parsedReport("one")})));
}

TEST_F(FolderWorkerTest, SeesLinksThatAppear)
{
    std::ofstream(outer.path() / "x") << reportOf("one");
    start();
    takeNews();

    fs::create_hard_link(outer.path() / "x", folder / "a.report");
    fs::create_symlink(outer.path() / "x", folder / "b.report");
    turn();

    EXPECT_THAT(takeNews(),
        ElementsAre(FolderNews(Added{"a.report", parsedReport("one")}),
            FolderNews(Added{"b.report", parsedReport("one")})));
}

TEST_F(FolderWorkerTest, TakesFoldersAndPipesAndLargeFilesAsUnreadable)
{
    fs::create_directory(folder / "a.report");
    ASSERT_EQ(::mkfifo((folder / "b.report").c_str(), 0600), 0);
    put("c.report", reportOf("large") + "\n" + std::string(1024 * 1024, 'x'));

    start();

    EXPECT_THAT(takeNews(),
        ElementsAre(FolderNews(Opened{folder.string()}),
            FolderNews(Unreadable{"a.report", {0, "not a regular file"}}),
            FolderNews(Unreadable{"b.report", {0, "not a regular file"}}),
            FolderNews(Unreadable{"c.report", {0, "larger than 1048576 bytes"}}), FolderNews(Scanned{3})));
}

TEST_F(FolderWorkerTest, LogsOneWarningForEachUnreadableFile)
{
    const auto log = orrenby::Log::CaptureHandler();
    orrenby::Log::onEvent(log);
    put("a.report", "Title: t\nSeverity: huge\n");
    start();

    put("a.report", "Title: t\nSeverity: huge\n");
    turn();

    EXPECT_THAT(log.messages(orrenby::Log::Level::warning),
        ElementsAre("a.report:2: unknown severity \"huge\": low, medium or high"));
}

TEST_F(FolderWorkerTest, TakesAFileThatIsWrittenAnewAtOnceAsChanged)
{
    put("a.report", reportOf("one"));
    start();
    takeNews();

    fs::remove(folder / "a.report");
    put("a.report", reportOf("two"));
    turn();

    EXPECT_THAT(takeNews(), ElementsAre(FolderNews(Changed{"a.report", parsedReport("two")})));
}

TEST_F(FolderWorkerTest, LooksAtEverythingAfterMoreChangesThanTheSystemNotes)
{
    const auto log = orrenby::Log::CaptureHandler();
    orrenby::Log::onEvent(log);
    put("b.report", reportOf("two"));
    start();
    takeNews();

    // Files of other names take their place in the queue, too. It holds 16,384 by default.
    auto limit = std::size_t(0);
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    for (std::size_t count = 0; count <= limit / 2; ++count) {
        put("notes.txt", "");
        fs::remove(folder / "notes.txt");
    }
    fs::remove(folder / "b.report");
    put("a.report", reportOf("one"));
    turn();

    EXPECT_THAT(takeNews(),
        ElementsAre(FolderNews(Removed{"b.report", parsedReport("two")}),
            FolderNews(Added{"a.report", parsedReport("one")})));
    EXPECT_EQ(log.count(orrenby::Log::Level::info), 1U);
}

TEST_F(FolderWorkerTest, FailsWhenTheFolderIsRemoved)
{
    put("a.report", reportOf("one"));
    start();
    takeNews();

    fs::remove_all(folder);
    turn();

    EXPECT_THAT(takeNews(), ElementsAre(FolderNews(Removed{"a.report", parsedReport("one")})));
    EXPECT_EQ(failure, FolderLost{"it was removed or moved"});
}

TEST_F(FolderWorkerTest, FailsWhenTheFolderIsMoved)
{
    start();

    fs::rename(folder, outer.path() / "elsewhere");
    turn();

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
    put("a.report", reportOf("one"));
    turn();

    EXPECT_THAT(takeNews(), ElementsAre());
}

TEST_F(FolderWorkerTest, TellsEverythingAnewWhenItIsStartedAgain)
{
    put("a.report", reportOf("one"));
    start();
    takeNews();

    worker->stop();
    worker->start();
    turn();

    EXPECT_THAT(
        takeNews(), ElementsAre(FolderNews(Added{"a.report", parsedReport("one")}), FolderNews(Scanned{1})));
}

TEST_F(FolderWorkerTest, MayBeStoppedByWhoeverReceivesItsNews)
{
    put("a.report", reportOf("one"));
    put("b.report", reportOf("two"));
    worker = orrenby::make<FolderWorker>(session);
    subscription = worker->news().sink([this](const auto& payload) {
        news.push_back(*payload.asValue());
        if (std::holds_alternative<Added>(news.back()))
            worker->stop();
    });

    worker->start();
    turn();

    EXPECT_THAT(takeNews(),
        ElementsAre(FolderNews(Opened{folder.string()}), FolderNews(Added{"a.report", parsedReport("one")})));
}

} // namespace
