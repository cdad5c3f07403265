#include "Scenario/Steps.hpp"

#include "Folder/WholeFile.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Scenario/Stage.hpp"
#include "Store/Recall.hpp"
#include "Store/StoreModel.hpp"
#include "Store/StoredReport.hpp"
#include "Store/StoredSetting.hpp"
#include <algorithm>
#include <cstdint>
#include <utility>

namespace fieldbook::steps {

StepProblem firstVersion(Stage&, const std::string& file)
{
    const auto context = orrenby::make<orrenby::NSManagedObjectContext>(
        orrenby::PersistentStore::open(firstStoreModel(), {.path = file}));
    const auto report = context->insert(StoredReport::entityName);
    report->setValue("file", "gate.json");
    report->setValue("number", std::int64_t(4));
    report->setValue("title", "Gate left open");
    report->setValue("place", "Harrow Gate");
    report->setValue("observer", "Ines Calder");
    report->setValue("severity", "low");
    const auto setting = context->insert(StoredSetting::entityName);
    setting->setValue("name", settingNames::order);
    setting->setValue("value", nameOf(SortOrder::byPlace));
    context->save();
    return {};
}

StepProblem stored(Stage& stage, const std::string& file)
{
    auto store = StoreFile::open(file);
    if (const auto problem = store.error())
        return problem->text;
    const auto opened = std::move(store).unwrap();
    const auto& memory = *opened->memory();
    for (const auto& [name, number, report, sending] : memory.reports())
        stage.say("#" + std::to_string(number) + ' ' + name + (report ? ": " + report->title.text : "")
            + (sending == Sending::notAsked    ? ""
                    : sending == Sending::done ? ", sent"
                                               : ", to be sent"));
    stage.say("order " + memory.setting(settingNames::order).value_or("not set") + ", user "
        + memory.setting(settingNames::user).value_or("not set"));
    return {};
}

StepProblem transaction(Stage& stage, const std::string& file)
{
    auto store = StoreFile::open(file);
    if (const auto problem = store.error())
        return problem->text;
    const auto opened = std::move(store).unwrap();
    auto& memory = *opened->memory();
    try {
        memory.commit([&] {
            memory.put("weir.json", 99, {"Planks loose", "Weir Lane", "Ines Calder", Severity::high, {}});
            memory.set(settingNames::order, "severity");
            memory.context()->insert<StoredReport>(StoredReport::entityName); // without what it has to have
        });
    } catch (const orrenby::StoreError& error) {
        // Without the object's own name, which counts what the process made so far.
        const auto words = wordsFor(error);
        stage.say("nothing was saved: " + words.substr(words.find('.') + 1));
        return {};
    }
    return "it was saved";
}

StepProblem damage(Stage&, const std::string& file)
{
    auto bytes = contentOf(file);
    std::fill_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 100), 'x');
    return writeWhole(file, bytes);
}

} // namespace fieldbook::steps
