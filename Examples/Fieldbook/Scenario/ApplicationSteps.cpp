#include "Scenario/Steps.hpp"

#include "Application/Options.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Scenario/Arguments.hpp"
#include "Scenario/Stage.hpp"
#include "Settings/Language.hpp"
#include "Store/Recall.hpp"
#include "Terminal/Text.hpp"
#include <utility>

namespace fieldbook::steps {

StepProblem start(Stage& stage, const std::string& arguments)
{
    const auto words = wordsOf(arguments);
    const auto options = parseOptions(pointersTo(words));
    if (const auto problem = options.error())
        return *problem;
    if (stage.root)
        return "it has started already";
    const auto chosen = options.unwrap();
    auto store = chosen.store ? StoreFile::open(*chosen.store)
                              : StoreFile::Outcome::success(StoreFile::inMemory());
    if (const auto problem = store.error()) {
        stage.terminal.print("! " + problem->text);
        return {};
    }
    stage.store = std::move(store).unwrap();
    choose(chosen.language.value_or(orrenby::Locale("en_US")));
    stage.session = std::make_unique<Session>(Session{stage.loop, stage.terminal, stage.trace, reportsFolder,
        Course::watch, chosen.link, chosen.station, chosen.user,
        chosen.service ? chosen.service : orrenby::URL::make("http://service.example")});
    stage.session->makeTransport = [&stage] { return stage.service.transport(); };
    if (chosen.language)
        stage.session->settings->language = chosen.language->identifier();
    stage.session->memory = stage.store->memory();
    stage.session->isMemoryKept = !stage.store->isInMemory();
    stage.session->isGuest = chosen.isGuest;
    stage.session->isUploadWanted = chosen.isUpload;
    stage.session->isRefreshWanted = chosen.service.has_value();
    recall(*stage.session);
    stage.trace.begin("Opening");
    stage.root = orrenby::make<RootFlow>(*stage.session);
    stage.root->start();
    return {};
}

StepProblem type(Stage& stage, const std::string& line)
{
    if (!stage.root)
        return "nothing has started";
    stage.session->commands.send(line);
    return {};
}

StepProblem leave(Stage& stage, const std::string&)
{
    stage.trace.begin("Closing");
    stage.root.reset();
    stage.world.runUntilIdle();
    stage.session.reset();
    stage.store.reset();
    return {};
}

StepProblem wait(Stage& stage, const std::string& seconds)
{
    const auto length = numberIn(seconds);
    if (!length)
        return "it takes a number of seconds";
    stage.world.advance(*length);
    return {};
}

} // namespace fieldbook::steps
