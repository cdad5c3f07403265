#include "Upload/UploadOperation.hpp"

#include "Feed/Cases.hpp"
#include "Orrenby/Platform/Net/BodyStreamError.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include "Store/StoreFile.hpp"
#include "Upload/ReportRequests.hpp"
#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>
#include <variant>

namespace fieldbook {

using Step = UploadProgress::Step;

namespace {

/// Does what has to be saved; gives why it could not be.
template <class Work> std::optional<std::string> noted(Work&& work)
{
    try {
        work();
        return {};
    } catch (const orrenby::StoreError& error) {
        orrenby::Log::error([&] { return "the outbox was not written: " + error.description(); });
        return "the store was not written: " + fieldbook::wordsFor(error);
    }
}

} // namespace

UploadOperation::UploadOperation(
    orrenby::Ref<UploadDestination> destination, QueuedReport report, Progress progress)
    : m_destination(std::move(destination))
    , m_report(std::move(report))
    , m_progress(std::move(progress))
{}

void UploadOperation::execute(Completion)
{
    const auto due = m_report.entry->notBefore();
    const auto seconds = due ? *due - orrenby::Date::now() : 0;
    if (seconds > 0)
        waitFor(seconds);
    else
        attempt();
}

void UploadOperation::cancel()
{
    AsyncBaseOperation::cancel();
    m_timer = {};
    m_exchange = {};
    if (!isExecuting())
        return;
    noted([this] { m_destination->outbox->wait(m_report, orrenby::Date::distantPast(), "stopped"); });
    finish();
}

void UploadOperation::attempt()
{
    if (!begin())
        return;
    m_hasRenewedToken = false;
    tell({.step = Step::begins});
    if (m_destination->token.empty())
        signIn();
    else
        sendReport();
}

/// Counts the attempt; gives whether there is to be one.
bool UploadOperation::begin()
{
    std::optional<int> attempt;
    const auto problem = noted([&] { attempt = m_destination->outbox->begin(m_report); });
    if (attempt) {
        m_attempt = *attempt;
        return true;
    }
    tell({.step = Step::isGivenUp, .reason = problem.value_or("somebody else sends it")});
    finish();
    return false;
}

void UploadOperation::signIn()
{
    m_hasRenewedToken = true;
    send(signInRequest(m_destination->service, m_destination->user), {}, &UploadOperation::hearToken);
}

void UploadOperation::sendReport()
{
    m_quarters = 0;
    try {
        auto signedRequest = ReportOutbox::request(
            *m_report.entry, m_destination->service, m_destination->token);
        send(std::move(signedRequest.request), std::move(signedRequest.body), &UploadOperation::hearReport);
    } catch (const orrenby::BodyStreamError& error) {
        end(Step::isRefused, error.description());
    } catch (const orrenby::StoreError& error) {
        end(Step::isRefused, fieldbook::wordsFor(error));
    }
}

void UploadOperation::send(
    orrenby::URLRequest request, orrenby::BodyStream body, void (UploadOperation::*hear)(const Answer&))
{
    // The queue keeps the operation until it has finished, and it drops the subscription before.
    m_exchange = m_destination->transport.send(std::move(request), std::move(body))
                     .sink([this, hear](const Transport::News::Payload& payload) {
                         if (payload.isError())
                             return fail(failureOf(*payload.asError()));
                         std::visit(Cases{[&](const BytesSent& bytes) { showSent(bytes); },
                                        [&](const Answer& answer) { (this->*hear)(answer); }},
                             *payload.asValue());
                     });
}

void UploadOperation::hearToken(const Answer& answer)
{
    if (!isDone(answer.status))
        return fail(failureOf(answer));
    const auto token = tokenIn(answer.body);
    if (!token)
        return fail({"no token in the answer"});
    m_destination->token = *token;
    sendReport();
}

void UploadOperation::hearReport(const Answer& answer)
{
    constexpr int notSignedIn = 401;
    if (isDone(answer.status))
        return end(Step::isSent);
    if (answer.status != notSignedIn || m_hasRenewedToken)
        return fail(failureOf(answer));
    m_destination->token.clear();
    signIn();
}

void UploadOperation::fail(const AttemptFailure& failure)
{
    if (failure.isPassing)
        tryLater(failure);
    else
        end(Step::isRefused, failure.reason);
}

void UploadOperation::showSent(const BytesSent& bytes)
{
    const auto quarters = static_cast<int>(bytes.sent * 4 / bytes.total);
    if (quarters <= m_quarters || quarters == 4)
        return;
    m_quarters = quarters;
    tell({.step = Step::sends, .percent = quarters * 25});
}

void UploadOperation::tryLater(const AttemptFailure& failure)
{
    const auto planned = m_retry.nextInterval();
    if (!planned || failure.atLeast > AttemptFailure::longestWait)
        return end(Step::isGivenUp, failure.reason);
    const auto seconds = std::max(*planned, failure.atLeast);
    const auto length = seconds * m_destination->secondLength;
    noted([&] { m_destination->outbox->wait(m_report, orrenby::Date::now() + length, failure.reason); });
    tell({.step = Step::waits, .seconds = seconds, .reason = failure.reason});
    waitFor(length);
}

/// @param seconds  Of real time.
void UploadOperation::waitFor(double seconds)
{
    m_timer = m_destination->loop.after(
        std::chrono::milliseconds(static_cast<long>(seconds * 1000)), [this] { attempt(); });
}

/// What failed for reasons that pass waits for somebody who asks again, or for the next run.
void UploadOperation::note(Step step, const std::string& reason)
{
    auto& outbox = *m_destination->outbox;
    noted([&] {
        if (step == Step::isSent)
            outbox.finish(m_report);
        else if (step == Step::isRefused)
            outbox.refuse(m_report, reason);
        else
            outbox.wait(m_report, orrenby::Date::distantPast(), reason);
    });
}

void UploadOperation::tell(UploadProgress progress)
{
    progress.number = m_report.number;
    progress.attempt = m_attempt;
    m_progress.send(std::move(progress));
}

void UploadOperation::end(Step step, std::string reason)
{
    m_timer = {};
    note(step, reason);
    tell({.step = step, .reason = std::move(reason)});
    finish();
}

} // namespace fieldbook
