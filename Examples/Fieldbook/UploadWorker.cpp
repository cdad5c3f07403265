#include "UploadWorker.hpp"

#include "CurlTransport.hpp"
#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include "Photo.hpp"
#include "Service/Mood.hpp"
#include <utility>

namespace fieldbook {

using Step = UploadProgress::Step;

UploadWorker::UploadWorker(Session& session)
    : m_session(session)
    , m_service(isTakenWhenMoody)
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
}

void UploadWorker::willStop()
{
    m_session.trace.step("UploadWorker stops");
    m_whenDone = nullptr;
    m_queue.cancelAllOperations();
    for (const auto number : std::exchange(m_open, {}))
        m_taken.erase(number);
    m_destination = nullptr;
    m_transport = nullptr;
    m_server = nullptr;
}

void UploadWorker::uploadAll()
{
    if (!prepare())
        return;
    auto count = 0;
    for (auto& [number, report] : m_session.catalogue.sorted(m_session.settings->sortOrder.get()))
        if (m_taken.insert(number).second) {
            ++count;
            m_open.insert(number);
            const auto photo = photoOf(m_session.folder, m_session.catalogue.fileOf(number));
            m_queue.addOperation(orrenby::make<UploadOperation>(
                m_destination, OutgoingReport{number, std::move(report), photo}, m_progress));
        }
    say(Style::faint, count == 0 ? "= nothing to upload" : "= " + std::to_string(count) + " to upload");
}

bool UploadWorker::prepare()
{
    if (!m_session.user) {
        say(Style::red, "! nobody is signed in: sign in ADDRESS");
        return false;
    }
    if (m_destination && m_destination->user == *m_session.user)
        return true;
    const auto service = findService();
    if (!service)
        return false;
    if (!m_transport && m_session.makeTransport)
        m_transport = m_session.makeTransport();
    else if (!m_transport)
        m_transport = std::make_unique<CurlTransport>();
    // A new one for somebody else: uploads that are on their way stay his who began them.
    m_destination = std::make_shared<UploadDestination>(UploadDestination{
        m_session.loop, *m_transport, *service, *m_session.user, {}, m_session.secondLength});
    return true;
}

std::optional<orrenby::URL> UploadWorker::findService()
{
    if (m_session.service)
        return m_session.service;
    if (!m_server) {
        auto started = ServiceServer::start(
            [this](const ServiceRequest& request) { return m_service.handle(request); });
        if (const auto problem = started.error()) {
            say(Style::red, "! no service: " + *problem);
            return {};
        }
        m_server = std::move(started).unwrap();
        if (m_session.terminal.isInteractive())
            say(Style::faint, "= a service listens at " + m_server->address());
    }
    return orrenby::URL::make(m_server->address());
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
    if (progress.step == Step::isRefused || progress.step == Step::isGivenUp) {
        ++m_session.uploads.givenUp;
        m_taken.erase(progress.number);
    } else if (progress.step != Step::isSent)
        return;
    m_open.erase(progress.number);
    callWhenDone();
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
