#pragma once

/// @file
/// The upload of one report.

#include "Application/EventLoop.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Utilities/AsyncBaseOperation.hpp"
#include "Orrenby/Utilities/Retry.hpp"
#include "Orrenby/Utilities/Streams/AnyCancellable.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Upload/AttemptFailure.hpp"
#include "Upload/ReportOutbox.hpp"
#include "Upload/Transport.hpp"
#include "Upload/UploadProgress.hpp"
#include <memory>
#include <string>

namespace fieldbook {

/// To whom reports are sent, in whose name, and where that is noted. Uploads share it: one that gets a token
/// leaves it to the others.
struct UploadDestination {
    EventLoop& loop;
    Transport& transport;
    orrenby::URL service;
    orrenby::EmailAddress user;
    std::shared_ptr<ReportOutbox> outbox;
    std::string token = {};  ///< Empty until the service gave one.
    double secondLength = 1; ///< Seconds of real time that a second of a back-off takes.
};

/// Sends a report of the outbox, and notes there how that goes: each attempt is counted before it begins.
/// Where the report may not be sent yet, as an earlier run noted, it waits until then.
///
/// Signs in if nobody has, and tries until the service takes the report, refuses it, or the schedule of
/// attempts is over. Tells of each step. Between the steps it waits on the loop; it blocks nobody.
///
/// A service that says when it wants to be asked again is not asked before; one that wants more than five
/// minutes is given up. A token that the service does not know any more is replaced once in each attempt. Use
/// from the main thread.
class UploadOperation : public orrenby::AsyncBaseOperation {
public:
    using Progress = orrenby::Streams::PassthroughSubject<UploadProgress, orrenby::Never>;

    /// Three attempts more, after 2, 4 and 8 seconds.
    UploadOperation(orrenby::Ref<UploadDestination> destination, QueuedReport report, Progress progress);

    void execute(Completion completion) override;

    /// Stops waiting and sending, too. The report stays in the outbox.
    void cancel() override;

private:
    void attempt();
    bool begin();
    void signIn();
    void sendReport();
    void send(
        orrenby::URLRequest request, orrenby::BodyStream body, void (UploadOperation::*hear)(const Answer&));
    void hearToken(const Answer& answer);
    void hearReport(const Answer& answer);
    void fail(const AttemptFailure& failure);
    void showSent(const BytesSent& bytes);

    void tryLater(const AttemptFailure& failure);
    void waitFor(double seconds);
    void note(UploadProgress::Step step, const std::string& reason);
    void tell(UploadProgress progress);
    void end(UploadProgress::Step step, std::string reason = {});

    orrenby::Ref<UploadDestination> m_destination;
    QueuedReport m_report;
    Progress m_progress;
    orrenby::Retry m_retry{2, 3, orrenby::Retry::Exponential{2}};
    int m_attempt = 0;
    int m_quarters = 0; ///< Of the body, that were told.
    bool m_hasRenewedToken = false;
    EventLoop::Watch m_timer;
    orrenby::Streams::AnyCancellable m_exchange;
};

} // namespace fieldbook
