#include "Scenario/Stage.hpp"

#include "Application/Options.hpp"
#include "Card/Caption.hpp"
#include "Folder/WholeFile.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Platform/Store/NSManagedObject.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Platform/Time/Locale.hpp"
#include "Orrenby/Utilities/Streams/EngineChoice.hpp"
#include "Orrenby/Utilities/Streams/Future.hpp"
#include "Report/SampleReports.hpp"
#include "Settings/Language.hpp"
#include "Store/Recall.hpp"
#include "Store/StoreModel.hpp"
#include "Store/StoredReport.hpp"
#include "Store/StoredSetting.hpp"
#include "Terminal/Text.hpp"
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;
using Problem = std::optional<std::string>;

const fs::path reportsFolder = "reports";

std::vector<std::string> wordsOf(std::string_view text)
{
    std::vector<std::string> words;
    while (!(text = trimmed(text)).empty()) {
        words.emplace_back(text.substr(0, text.find(' ')));
        text.remove_prefix(words.back().size());
    }
    return words;
}

std::vector<const char*> pointersTo(const std::vector<std::string>& words)
{
    std::vector<const char*> pointers;
    for (const auto& word : words)
        pointers.push_back(word.c_str());
    return pointers;
}

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Bytes of all kinds, with lines that begin as delimiters do.
std::string photoBytes(std::size_t size)
{
    std::string bytes = "\x89PNG\r\n--";
    unsigned state = 1;
    while (bytes.size() < size)
        bytes += static_cast<char>((state = state * 1664525U + 1013904223U) >> 24U);
    bytes.resize(size);
    return bytes;
}

/// Escape sequences as they are typed.
std::string typed(std::string text)
{
    for (std::size_t place = 0; (place = text.find('\x1B', place)) != std::string::npos;)
        text.replace(place, 1, "\\e");
    return text;
}

ServiceRequest sessionRequest(const std::string& address)
{
    return {"POST", "/session", {}, R"({"address": ")" + address + "\"}", {}};
}

/// Signs in and posts one report, as often as it is told to. Gives how many were taken.
int postReports(ReportService& service, const std::string& address, int count)
{
    int taken = 0;
    for (int number = 1; number <= count; ++number) {
        const auto session = service.handle(sessionRequest(address)).body;
        const auto token = session.substr(session.find(':') + 2, 36);
        const auto answer = service.handle({"POST", "/reports",
            {{"authorization", "Token token=\"" + token + '"'}, {"content-type", "application/json"},
                {"idempotency-key", std::to_string(number)}},
            R"({"title": "Gate open", "place": "Weir", "observer": "Nils", "severity": "low"})", {}});
        taken += answer.status == 201 ? 1 : 0;
    }
    return taken;
}

} // namespace

Stage::Stage(Terminal& terminal)
    : m_terminal(terminal)
    , m_trace(terminal)
    , m_service(m_loop)
{}

Stage::~Stage()
{
    m_root.reset();
    m_loop.drain();
}

struct Stage::Verb {
    const char* name;
    Problem (Stage::*perform)(const std::string& rest);
};

std::optional<std::string> Stage::play(const ScenarioStep& step)
{
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%.1f", m_world.elapsed());
    m_terminal.print("> " + std::string(time.data()) + " s: " + step.text());
    if (auto problem = perform(step))
        return "line " + std::to_string(step.line) + ": " + *problem;
    m_world.advance(0.1);
    return {};
}

Stage::Problem Stage::perform(const ScenarioStep& step)
{
    static constexpr Verb verbs[] = {{"start", &Stage::start}, {"type", &Stage::type},
        {"leave", &Stage::leave}, {"wait", &Stage::wait}, {"write", &Stage::write},
        {"remove", &Stage::remove}, {"move", &Stage::move}, {"photo", &Stage::photo},
        {"serve", &Stage::serve}, {"kill", &Stage::kill}, {"forget", &Stage::forget},
        {"received", &Stage::received}, {"compare", &Stage::compare}, {"rush", &Stage::rush},
        {"first-version", &Stage::firstVersion}, {"stored", &Stage::stored},
        {"transaction", &Stage::transaction}, {"damage", &Stage::damage}, {"alive", &Stage::alive},
        {"engine", &Stage::engine}, {"caption", &Stage::caption}};
    for (const auto& verb : verbs)
        if (step.verb == verb.name)
            return (this->*verb.perform)(step.rest);
    return "there is no step \"" + printable(step.verb) + '"';
}

Stage::Problem Stage::start(const std::string& arguments)
{
    const auto words = wordsOf(arguments);
    const auto options = parseOptions(pointersTo(words));
    if (const auto problem = options.error())
        return *problem;
    if (m_root)
        return "it has started already";
    const auto chosen = options.unwrap();
    auto store = chosen.store ? StoreFile::open(*chosen.store)
                              : StoreFile::Outcome::success(StoreFile::inMemory());
    if (const auto problem = store.error()) {
        m_terminal.print("! " + problem->text);
        return {};
    }
    m_store = std::move(store).unwrap();
    choose(chosen.language.value_or(orrenby::Locale("en_US")));
    m_session = std::make_unique<Session>(Session{m_loop, m_terminal, m_trace, reportsFolder, Course::watch,
        chosen.link, chosen.station, chosen.user, orrenby::URL::make("http://service.example")});
    m_session->makeTransport = [this] { return m_service.transport(); };
    if (chosen.language)
        m_session->settings->language = chosen.language->identifier();
    m_session->memory = m_store->memory();
    m_session->isMemoryKept = !m_store->isInMemory();
    m_session->isUploadWanted = chosen.isUpload;
    recall(*m_session);
    m_trace.begin("Opening");
    m_root = orrenby::make<RootFlow>(*m_session);
    m_root->start();
    return {};
}

Stage::Problem Stage::type(const std::string& line)
{
    if (!m_root)
        return "nothing has started";
    m_session->commands.send(line);
    return {};
}

Stage::Problem Stage::leave(const std::string&)
{
    m_trace.begin("Closing");
    m_root.reset();
    m_world.runUntilIdle();
    m_session.reset();
    m_store.reset();
    return {};
}

Stage::Problem Stage::wait(const std::string& seconds)
{
    const auto length = numberIn(seconds);
    if (!length)
        return "it takes a number of seconds";
    m_world.advance(*length);
    return {};
}

Stage::Problem Stage::write(const std::string& fileAndText)
{
    const auto end = std::min(fileAndText.find(' '), fileAndText.size());
    return writeWhole(reportsFolder / fileAndText.substr(0, end), trimmed(fileAndText.substr(end)));
}

Stage::Problem Stage::remove(const std::string& file)
{
    std::error_code error;
    return fs::remove(reportsFolder / file, error) ? Problem() : "there is no " + file;
}

Stage::Problem Stage::move(const std::string& files)
{
    const auto words = wordsOf(files);
    std::error_code error;
    if (words.size() == 2)
        fs::rename(reportsFolder / words[0], reportsFolder / words[1], error);
    return words.size() == 2 && !error ? Problem() : "it takes two names";
}

Stage::Problem Stage::photo(const std::string& fileAndSize)
{
    const auto words = wordsOf(fileAndSize);
    const auto size = words.size() == 2 ? numberIn(words[1]) : std::nullopt;
    if (!size)
        return "it takes a name and a number of bytes";
    return writeWhole(reportsFolder / words[0], photoBytes(static_cast<std::size_t>(*size)));
}

Stage::Problem Stage::serve(const std::string& arguments)
{
    const auto words = wordsOf(arguments);
    const auto options = parseDaemonOptions(pointersTo(words));
    if (const auto problem = options.error())
        return *problem;
    if (!m_reports)
        m_reports = std::make_unique<ReportService>(ReportServiceOptions{
            .feed = SampleReports(options.value()->feed.seed).next(options.value()->feed.count)});
    m_faulty = std::make_unique<FaultyService>(
        [this](const ServiceRequest& request) { return m_reports->handle(request); },
        options.value()->faults);
    m_service.start([this](const ServiceRequest& request) {
        auto response = m_faulty->handle(request);
        m_terminal.print("  " + request.method + ' ' + request.path + ' ' + std::to_string(response.status)
            + (response.isCut              ? " cut"
                    : response.latency > 0 ? " late"
                                           : ""));
        return response;
    });
    return {};
}

Stage::Problem Stage::kill(const std::string&)
{
    m_service.kill();
    return {};
}

Stage::Problem Stage::forget(const std::string&)
{
    if (!m_reports)
        return "there is no service";
    m_reports->forgetTokens();
    return {};
}

Stage::Problem Stage::received(const std::string&)
{
    if (!m_reports)
        return "there is no service";
    for (const auto& report : m_reports->received())
        say("#" + std::to_string(report.number) + " from " + report.sender.stringValue() + ": "
            + report.report.title.text
            + (report.photo ? ", photo of " + std::to_string(report.photo->content.size()) + " bytes" : ""));
    return {};
}

Stage::Problem Stage::compare(const std::string& numberAndFile)
{
    const auto words = wordsOf(numberAndFile);
    const auto number = words.size() == 2 ? numberIn(words[0]) : std::nullopt;
    if (!number || !m_reports)
        return "it takes the number of a report and the name of a file";
    const auto content = contentOf(reportsFolder / words[1]);
    for (const auto& report : m_reports->received())
        if (report.number == *number && report.photo) {
            const bool isSame = report.photo->content == content;
            say("the photo of #" + words[0] + " and " + words[1] + ": "
                + (isSame ? "the same " + std::to_string(content.size()) + " bytes" : "other bytes"));
            return {};
        }
    return "no photo of #" + words[0] + " was received";
}

Stage::Problem Stage::rush(const std::string& count)
{
    const auto times = numberIn(count);
    if (!times || !m_reports)
        return "it takes how often, and a service";
    int first = 0;
    std::thread other([&] { first = postReports(*m_reports, "ada@hut.example", *times); });
    const auto second = postReports(*m_reports, "bo@hut.example", *times);
    other.join();
    say(std::to_string(first) + " and " + std::to_string(second) + " requests were answered; "
        + counted(m_reports->received().size(), "report") + " taken");
    return {};
}

Stage::Problem Stage::firstVersion(const std::string& file)
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

Stage::Problem Stage::stored(const std::string& file)
{
    auto store = StoreFile::open(file);
    if (const auto problem = store.error())
        return problem->text;
    const auto opened = std::move(store).unwrap();
    const auto& memory = *opened->memory();
    for (const auto& [name, number, report, sending] : memory.reports())
        say("#" + std::to_string(number) + ' ' + name + (report ? ": " + report->title.text : "")
            + (sending == Sending::notAsked    ? ""
                    : sending == Sending::done ? ", sent"
                                               : ", to be sent"));
    say("order " + memory.setting(settingNames::order).value_or("not set") + ", user "
        + memory.setting(settingNames::user).value_or("not set"));
    return {};
}

Stage::Problem Stage::transaction(const std::string& file)
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
        say("nothing was saved: " + words.substr(words.find('.') + 1));
        return {};
    }
    return "it was saved";
}

Stage::Problem Stage::damage(const std::string& file)
{
    auto bytes = contentOf(file);
    std::fill_n(bytes.begin(), std::min<std::size_t>(bytes.size(), 100), 'x');
    return writeWhole(file, bytes);
}

Stage::Problem Stage::alive(const std::string&)
{
    say(describeLiveParts() + "  pending " + std::to_string(m_world.pendingCount()));
    return {};
}

Stage::Problem Stage::engine(const std::string& name)
{
    if (name != "Combine" && name != "Rx")
        return "it takes Combine or Rx";
    orrenby::Streams::set({.isCombineEnabledWhenAvailable = name == "Combine"});
    // What a future does before anybody subscribes is where the engines differ.
    bool hasBegun = false;
    const orrenby::Streams::Future<int, orrenby::Never> future([&hasBegun](const auto& promise) {
        hasBegun = true;
        promise(orrenby::Result<int, orrenby::Never>::success(1));
        return nullptr;
    });
    say(hasBegun ? "a future begins at once" : "a future begins when somebody subscribes");
    return {};
}

Stage::Problem Stage::caption(const std::string& text)
{
    say(captioned(m_terminal, text));
    say(typed(captioned(Terminal(STDOUT_FILENO, true), text)));
    return {};
}

void Stage::say(const std::string& text) { m_terminal.print("= " + text); }

} // namespace fieldbook
