#include "Store/Memory.hpp"

#include "Orrenby/Foundation/NSManagedObjectContext.hpp"
#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace fieldbook {

namespace {

/// A store that others wrote into may hold any number.
Sending sendingIn(const StoredReport& stored)
{
    const auto sending = stored.sending.get();
    return static_cast<Sending>(std::clamp<std::int64_t>(sending, 0, 2));
}

} // namespace

Memory::Memory(orrenby::Ref<orrenby::NSManagedObjectContext> context)
    : m_context(std::move(context))
{
    readReports();
    readSettings();
}

void Memory::readReports()
{
    std::set<std::int64_t> numbers;
    for (const auto& stored : m_context->fetch<StoredReport>({.entity = StoredReport::entityName})) {
        const auto number = stored->number.get();
        const bool isNumber = number > 0 && number < std::numeric_limits<int>::max();
        if (isNumber && !m_reports.contains(stored->file.get()) && numbers.insert(number).second)
            m_reports.emplace(stored->file.get(), stored);
    }
}

void Memory::readSettings()
{
    for (const auto& stored : m_context->fetch<StoredSetting>({.entity = StoredSetting::entityName}))
        m_settings.emplace(stored->name.get(), stored);
}

std::vector<RememberedReport> Memory::reports() const
{
    std::vector<RememberedReport> result;
    for (const auto& [file, stored] : m_reports) {
        result.push_back({file, static_cast<int>(stored->number.get()),
            stored->isThere.get() ? stored->report() : std::nullopt, sendingIn(*stored)});
    }
    std::sort(result.begin(), result.end(),
        [](const auto& first, const auto& second) { return first.number < second.number; });
    return result;
}

std::optional<std::string> Memory::setting(const std::string& name) const
{
    const auto entry = m_settings.find(name);
    return entry != m_settings.end() ? std::optional(entry->second->text.get()) : std::nullopt;
}

void Memory::commit(orrenby::UniqueFunction<void()> change)
{
    orrenby::commit(m_context, {}, [&](const auto&) { change(); });
}

void Memory::put(const std::string& file, int number, const Report& report)
{
    auto& stored = m_reports[file];
    if (!stored) {
        stored = m_context->insert<StoredReport>(StoredReport::entityName);
        stored->file = file;
    }
    stored->number = number;
    stored->isThere = true;
    stored->take(report);
}

void Memory::takeAway(const std::string& file)
{
    if (const auto entry = m_reports.find(file); entry != m_reports.end())
        entry->second->isThere = false;
}

void Memory::mark(int number, Sending sending)
{
    for (const auto& [file, stored] : m_reports)
        if (stored->number.get() == number)
            stored->sending = static_cast<std::int64_t>(sending);
}

Sending Memory::sendingOf(const std::string& file) const
{
    const auto entry = m_reports.find(file);
    return entry != m_reports.end() ? sendingIn(*entry->second) : Sending::notAsked;
}

void Memory::set(const std::string& name, const std::string& text)
{
    auto& stored = m_settings[name];
    if (!stored) {
        stored = m_context->insert<StoredSetting>(StoredSetting::entityName);
        stored->name = name;
    }
    stored->text = text;
}

} // namespace fieldbook
