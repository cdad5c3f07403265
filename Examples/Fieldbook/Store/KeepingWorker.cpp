#include "Store/KeepingWorker.hpp"

#include "Feed/Cases.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Store/Recall.hpp"
#include <chrono>
#include <utility>
#include <variant>

namespace fieldbook {

using orrenby::keyPath;

KeepingWorker::KeepingWorker(Session& session, News news)
    : m_session(session)
    , m_news(std::move(news))
{}

KeepingWorker::~KeepingWorker() = default;

void KeepingWorker::didStart()
{
    m_session.trace.step("KeepingWorker starts");
    observeSettings();
    m_news
        .sink([this](const News::Payload& payload) {
            if (const auto* news = payload.asValue())
                note(*news);
        })
        .store(*this);
}

void KeepingWorker::willStop()
{
    m_session.trace.step("KeepingWorker stops");
    m_changes.reset();
    m_writing = {};
    write();
}

void KeepingWorker::observeSettings()
{
    m_changes = orrenby::make<orrenby::KeyPathObserver<Settings>>(m_session.settings);
    // The first value is that of the moment: a language may have been chosen for this run.
    m_changes->observe(keyPath<&Settings::sortOrder>(), [this](const auto& observation) {
        noteSetting(settingNames::order, std::string(nameOf(observation.value())));
    });
    m_changes->observe(keyPath<&Settings::isDetailed>(), [this](const auto& observation) {
        noteSetting(settingNames::details, observation.value() ? "on" : "off");
    });
    m_changes->observe(keyPath<&Settings::language>(),
        [this](const auto& observation) { noteSetting(settingNames::language, observation.value()); });
}

void KeepingWorker::note(const FeedNews& news)
{
    std::visit(Cases{
                   [&](const Added& it) { noteReport(it.file, it.report); },
                   [&](const Changed& it) { noteReport(it.file, it.report); },
                   [&](const Removed& it) { noteReport(it.file, std::nullopt); },
                   [&](const Unreadable& it) { noteReport(it.file, std::nullopt); },
                   [&](const SignedIn& it) { noteSetting(settingNames::user, it.address.stringValue()); },
                   [](const auto&) {},
               },
        news);
}

void KeepingWorker::noteReport(const std::string& file, std::optional<Report> report)
{
    m_reports.insert_or_assign(file, std::move(report));
    writeSoon();
}

void KeepingWorker::noteSetting(const char* name, std::string text)
{
    if (m_session.memory->setting(name) == text && !m_settings.contains(name))
        return;
    m_settings.insert_or_assign(name, std::move(text));
    writeSoon();
}

void KeepingWorker::writeSoon()
{
    m_writing = m_session.loop.after(std::chrono::milliseconds(0), [this] { write(); });
}

void KeepingWorker::write()
{
    if (m_reports.empty() && m_settings.empty())
        return;
    auto& memory = *m_session.memory;
    try {
        memory.commit([&] {
            for (const auto& [file, report] : std::exchange(m_reports, {}))
                if (report)
                    memory.put(file, m_session.catalogue.numberOf(file), *report);
                else
                    memory.takeAway(file);
            for (const auto& [name, text] : std::exchange(m_settings, {}))
                memory.set(name, text);
        });
        m_hasFailed = false;
    } catch (const orrenby::StoreError& error) {
        orrenby::Log::error([&] { return "the store was not written: " + error.description(); });
        if (!std::exchange(m_hasFailed, true))
            m_session.terminal.print(
                m_session.terminal.styled(Style::red, "! the store was not written: " + wordsFor(error)));
    }
}

} // namespace fieldbook
