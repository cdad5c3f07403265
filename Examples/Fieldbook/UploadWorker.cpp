#include "UploadWorker.hpp"

#include "Orrenby/Platform/Scheduling/DispatchQueue.hpp"
#include <string>
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
}

void UploadWorker::willStop()
{
    m_session.trace.step("UploadWorker stops");
    m_whenDone = nullptr;
    m_queue.cancelAllOperations();
}

void UploadWorker::uploadAll()
{
    auto count = 0;
    for (const auto& [number, report] : m_session.catalogue.sorted(m_session.settings->sortOrder.get()))
        if (m_taken.insert(number).second) {
            ++count;
            ++m_openCount;
            m_queue.addOperation(
                orrenby::make<UploadOperation>(m_session.loop, number, m_progress, m_session.secondLength));
        }
    m_session.terminal.print(m_session.terminal.styled(
        Style::faint, count == 0 ? "= nothing to upload" : "= " + std::to_string(count) + " to upload"));
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
    case Step::waits:
        line += terminal.styled(Style::yellow,
            "no answer; attempt " + std::to_string(progress.attempt + 1) + " in "
                + std::to_string(static_cast<int>(progress.seconds)) + " s");
        break;
    case Step::isSent:
        ++m_session.uploads.sent;
        line += terminal.styled(Style::green, "sent");
        break;
    case Step::isGivenUp:
        ++m_session.uploads.givenUp;
        m_taken.erase(progress.number);
        line += terminal.styled(
            Style::red, "given up after " + std::to_string(progress.attempt) + " attempts");
        break;
    }
    m_session.terminal.print(line);
    if (progress.step == Step::isSent || progress.step == Step::isGivenUp) {
        --m_openCount;
        callWhenDone();
    }
}

void UploadWorker::callWhenDone()
{
    if (m_openCount == 0 && m_whenDone)
        std::exchange(m_whenDone, nullptr)();
}

} // namespace fieldbook
