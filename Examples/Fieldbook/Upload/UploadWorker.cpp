#include "Upload/UploadWorker.hpp"

#include "Feed/ReportSupply.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Terminal/Text.hpp"
#include "Upload/Photo.hpp"
#include <utility>

namespace fieldbook {

using Step = UploadProgress::Step;

UploadWorker::UploadWorker(Session& session)
    : m_session(session)
{
    m_queue.setName("uploads");
    m_queue.setUnderlyingQueue(orrenby::DispatchQueue::main());
    // Without pauses two of them would meet in an order that no run repeats.
    m_queue.setMaxConcurrentOperationCount(session.secondLength > 0 ? 2 : 1);
}

UploadWorker::~UploadWorker() = default;

void UploadWorker::didStart()
{
    m_session.trace.step("UploadWorker starts");
    m_progress.asPublisher().bind([this](const UploadProgress& progress) { show(progress); }).store(*this);
    try {
        m_outbox = std::make_shared<ReportOutbox>(m_session.memory);
        m_outbox->waitingCount()
            .sink([this](const auto& payload) {
                if (const auto* count = payload.asValue())
                    m_session.uploads.waiting = *count;
            })
            .store(*this);
    } catch (const orrenby::StoreError& error) {
        say(error);
    }
}

void UploadWorker::willStop()
{
    m_session.trace.step("UploadWorker stops");
    m_whenDone = nullptr;
    m_queue.cancelAllOperations();
    m_open.clear();
    m_destinations.clear();
    m_remote = nullptr;
    m_outbox = nullptr;
}

void UploadWorker::uploadAll()
{
    if (!m_session.user)
        return say(Style::red, "! nobody is signed in: sign in ADDRESS");
    if (!remote().address())
        return;
    try {
        auto reports = waiting();
        for (auto& report : putIn())
            reports.push_back(std::move(report));
        say(Style::faint,
            reports.empty() ? "= nothing to upload" : "= " + std::to_string(reports.size()) + " to upload");
        for (const auto& report : reports)
            queue(report);
    } catch (const orrenby::StoreError& error) {
        say(error);
    }
}

void UploadWorker::resume()
{
    try {
        const auto reports = waiting();
        if (reports.empty())
            return;
        say(Style::faint,
            reports.size() == 1 ? "= 1 upload goes on"
                                : "= " + std::to_string(reports.size()) + " uploads go on");
        for (const auto& report : reports)
            queue(report);
    } catch (const orrenby::StoreError& error) {
        say(error);
    }
}

/// What the outbox holds and nobody here sends.
std::vector<QueuedReport> UploadWorker::waiting() const
{
    if (!m_outbox)
        return {};
    auto reports = m_outbox->waiting();
    std::erase_if(reports, [this](const QueuedReport& report) { return m_open.contains(report.number); });
    return reports;
}

/// Puts in whatever was not sent yet and is not in the outbox.
std::vector<QueuedReport> UploadWorker::putIn()
{
    if (!m_outbox)
        return {};
    auto shipment = Shipment{{}, m_session.service, *m_session.user};
    auto& catalogue = m_session.catalogue;
    for (auto& [number, report] : catalogue.sorted(m_session.settings->sortOrder.get())) {
        auto file = catalogue.fileOf(number);
        if (file.starts_with(servicePrefix) || m_session.memory->sendingOf(file) != Sending::notAsked)
            continue;
        auto photo = photoOf(m_session.folder, file);
        shipment.reports.push_back({number, std::move(report), std::move(photo), std::move(file)});
    }
    auto [queued, problems] = m_outbox->put(shipment);
    for (const auto& [number, problem] : problems) {
        ++m_session.uploads.givenUp;
        say(Style::red, "^ #" + std::to_string(number) + " refused: " + problem);
    }
    return std::move(queued);
}

void UploadWorker::queue(const QueuedReport& report)
{
    const auto destination = destinationOf(report);
    if (!destination)
        return;
    m_open.insert(report.number);
    m_queue.addOperation(orrenby::make<UploadOperation>(destination, report, m_progress));
}

/// Uploads that were begun for somebody stay his, whoever signed in since.
orrenby::Ref<UploadDestination> UploadWorker::destinationOf(const QueuedReport& report)
{
    const auto service = report.service ? report.service : remote().address();
    if (!service)
        return nullptr;
    auto& destination = m_destinations[{service->absoluteString(), report.sender.stringValue()}];
    if (!destination)
        destination = std::make_shared<UploadDestination>(UploadDestination{m_session.loop,
            remote().transport(), *service, report.sender, m_outbox, {}, m_session.secondLength});
    return destination;
}

RemoteService& UploadWorker::remote()
{
    if (!m_remote)
        m_remote = RemoteService::of(m_session);
    return *m_remote;
}

void UploadWorker::waitForUploads(orrenby::UniqueFunction<void()> whenDone)
{
    m_whenDone = std::move(whenDone);
    callWhenDone();
}

void UploadWorker::show(const UploadProgress& progress)
{
    const auto& terminal = m_session.terminal;
    auto line = "^ #" + std::to_string(progress.number) + ' ';
    switch (progress.step) {
    case Step::begins:
        if (progress.attempt == 1)
            return; // the usual case needs no line of its own
        line += "attempt " + std::to_string(progress.attempt);
        break;
    case Step::sends:
        line += terminal.styled(Style::faint, std::to_string(progress.percent) + " % on its way");
        break;
    case Step::waits:
        line += terminal.styled(Style::yellow,
            progress.reason + "; attempt " + std::to_string(progress.attempt + 1) + " in "
                + std::to_string(static_cast<int>(progress.seconds)) + " s");
        break;
    case Step::isSent:
        ++m_session.uploads.sent;
        line += terminal.styled(Style::green, "sent");
        break;
    case Step::isRefused:
        line += terminal.styled(Style::red, "refused: " + progress.reason);
        break;
    case Step::isGivenUp:
        line += terminal.styled(Style::red,
            "given up after " + std::to_string(progress.attempt) + " attempts: " + progress.reason);
        break;
    }
    m_session.terminal.print(line);
    if (progress.step == Step::isRefused || progress.step == Step::isGivenUp)
        ++m_session.uploads.givenUp;
    else if (progress.step != Step::isSent)
        return;
    m_open.erase(progress.number);
    endBatch();
}

/// Says what was not brought to its end, if another run can do so.
void UploadWorker::endBatch()
{
    if (m_open.empty() && m_session.isMemoryKept && m_session.uploads.waiting > 0)
        say(Style::faint,
            "= " + counted(m_session.uploads.waiting, "report")
                + " left in the outbox: sent with the next start, or with upload");
    callWhenDone();
}

void UploadWorker::say(const orrenby::StoreError& error)
{
    say(Style::red, "! the outbox cannot be used: " + wordsFor(error));
}

void UploadWorker::say(Style style, const std::string& text)
{
    m_session.terminal.print(m_session.terminal.styled(style, text));
}

void UploadWorker::callWhenDone()
{
    if (m_open.empty() && m_whenDone)
        std::exchange(m_whenDone, nullptr)();
}

} // namespace fieldbook
