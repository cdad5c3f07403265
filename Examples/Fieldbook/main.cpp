// Fieldbook: a small application on Orrenby. README.md says what to read in which order.

#include "Application/EventLoop.hpp"
#include "Application/LifeTrace.hpp"
#include "Application/Options.hpp"
#include "Application/RootFlow.hpp"
#include "Application/Session.hpp"
#include "Application/Summary.hpp"
#include "Folder/ReportFolder.hpp"
#include "Folder/Samples.hpp"
#include "Orrenby/Utilities/Log/ConsoleHandler.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Orrenby/Utilities/Log/Settings.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include "Settings/Language.hpp"
#include "Store/Recall.hpp"
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <unistd.h>

namespace fieldbook {

namespace {

constexpr int failed = 1;
constexpr int wronglyCalled = 2;

void complain(const std::string& message) { Terminal(STDERR_FILENO, false).print("fieldbook: " + message); }

/// Settings of the whole process. They are made before anything else uses the library.
void setUp(const Options& options)
{
    orrenby::Log::setUseEmoji(false);
    orrenby::Log::setLevel(orrenby::Log::Level::info);
    orrenby::Log::onEvent(orrenby::Log::ConsoleHandler());
    orrenby::Streams::set({.isCombineEnabledWhenAvailable = !options.usesRx});
    if (options.language)
        choose(*options.language);
    // A reader who leaves is noticed when writing fails, and the temporary folder is still cleared away.
    std::signal(SIGPIPE, SIG_IGN);
}

Course courseOf(const Options& options, const Terminal& terminal)
{
    if (options.isScript)
        return Course::script;
    if (options.isWatch || terminal.isInteractive())
        return Course::watch;
    return options.folder ? Course::look : Course::script;
}

/// Whoever cannot say who he is need not.
bool isGuest(Course course, const Options& options)
{
    return options.isGuest || course == Course::look
        || (course == Course::watch && ::isatty(STDIN_FILENO) != 1);
}

/// The life of the tree: it stands while the loop runs.
void live(Session& session)
{
    session.trace.begin("Opening");
    auto root = orrenby::make<RootFlow>(session);
    root->start();

    session.loop.run();

    // The last reference: everything ends with it, in the documented order.
    session.trace.begin("Closing");
    root.reset();
    // What was on its way to the main thread finds nobody any more.
    session.loop.drain();
}

/// The samples have a station, too; a folder of one's own has that which the user names.
std::optional<std::filesystem::path> stationOf(const Options& options)
{
    if (options.station || options.folder)
        return options.station;
    return sampleResponse();
}

/// The store of the run: the one that the user names, the one of the folder, or one that goes away with the
/// copy of the samples.
StoreFile::Outcome openStore(const Options& options, const std::filesystem::path& folder)
{
    if (options.store)
        return StoreFile::open(*options.store);
    if (!options.folder)
        return StoreFile::open(folder / ".fieldbook.store");
    const auto file = defaultStoreFile(folder);
    auto outcome = file ? StoreFile::open(*file) : StoreFile::Outcome::success(StoreFile::inMemory());
    const auto problem = outcome.error();
    if (!problem || problem->kind == StoreProblem::Kind::unusable)
        return outcome;
    // Nobody asked for this file, so the run does without.
    complain(problem->text + "; nothing of this run is kept");
    return StoreFile::Outcome::success(StoreFile::inMemory());
}

int runIn(const std::filesystem::path& folder, Course course, const Options& options, Terminal& terminal)
{
    if (const auto problem = problemOfFolder(folder)) {
        complain(*problem);
        return failed;
    }
    const auto store = openStore(options, folder);
    if (const auto problem = store.error()) {
        complain(problem->text);
        return failed;
    }
    if (options.samples) {
        const auto outcome = writeSamples(*options.samples, folder);
        if (const auto problem = outcome.error()) {
            complain(*problem);
            return failed;
        }
    }
    auto loop = EventLoop();
    auto trace = LifeTrace(terminal);
    auto session = Session{loop, terminal, trace, folder, course, options.link, stationOf(options),
        options.user, options.service};
    if (course == Course::script)
        session.secondLength = terminal.isInteractive() ? 0.25 : 0;
    if (options.language)
        session.settings->language = options.language->identifier();
    session.memory = store.unwrap()->memory();
    session.isMemoryKept = (options.folder || options.store) && !store.unwrap()->isInMemory();
    session.isGuest = isGuest(course, options);
    session.isUploadWanted = options.isUpload;
    session.isRefreshWanted = options.service.has_value();
    recall(session);
    live(session);

    printSummary(session, terminal);
    if (!terminal.isIntact())
        complain("the output could not be written");
    const bool isGood = session.ending.value() != Ending::folderLost && isNothingLive()
        && terminal.isIntact();
    return isGood ? 0 : failed;
}

int run(const Options& options)
{
    setUp(options);
    auto terminal = Terminal(STDOUT_FILENO);
    const auto course = courseOf(options, terminal);
    if (options.folder)
        return runIn(*options.folder, course, options, terminal);
    // What is written during the run is not for the bundle.
    const auto copy = TemporaryCopy(samplesFolder());
    return runIn(copy.path(), course, options, terminal);
}

} // namespace

} // namespace fieldbook

int main(int argumentCount, char** arguments)
{
    using namespace fieldbook;
    const auto options = parseOptions({arguments + 1, static_cast<std::size_t>(argumentCount - 1)});
    if (const auto message = options.error()) {
        complain(*message + "\nTry --help.");
        return wronglyCalled;
    }
    if (options.value()->isHelp) {
        std::fputs(helpText().data(), stdout);
        return std::fflush(stdout) == 0 ? 0 : failed;
    }
    try {
        return run(options.unwrap());
    } catch (const std::exception& error) {
        complain(error.what());
        return failed;
    }
}
