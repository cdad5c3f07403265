#include "Store/Recall.hpp"

#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Settings/Language.hpp"
#include "SignIn/SignIn.hpp"

namespace fieldbook {

namespace {

void recallReports(Session& session)
{
    for (const auto& [file, number, report, sending] : session.memory->reports()) {
        session.catalogue.restore(file, number);
        if (report)
            session.remembered.emplace(file, *report);
    }
}

void recallSettings(Session& session)
{
    const auto& memory = *session.memory;
    auto& settings = *session.settings;
    if (const auto order = NamedCases<SortOrder>::make(memory.setting(settingNames::order).value_or("")))
        settings.sortOrder = *order;
    if (const auto details = memory.setting(settingNames::details))
        settings.isDetailed = *details != "off";
    const auto language = languageNamed(memory.setting(settingNames::language).value_or(""));
    if (language && settings.language.get().empty()) {
        choose(*language);
        settings.language = language->identifier();
    }
    if (!session.user)
        session.user = addressToSignIn(memory.setting(settingNames::user).value_or("")).value();
}

} // namespace

void recall(Session& session)
{
    recallReports(session);
    recallSettings(session);
}

void forgetUser(Session& session)
{
    try {
        session.memory->commit([&] { session.memory->set(settingNames::user, ""); });
    } catch (const orrenby::StoreError& error) {
        orrenby::Log::error([&] { return "the store was not written: " + error.description(); });
    }
}

} // namespace fieldbook
