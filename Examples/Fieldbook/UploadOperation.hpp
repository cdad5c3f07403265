#pragma once

/// @file
/// The upload of one report.

#include "EventLoop.hpp"
#include "Orrenby/Utilities/AsyncBaseOperation.hpp"
#include "Orrenby/Utilities/Retry.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "UploadProgress.hpp"

namespace fieldbook {

/// Tries until the service takes the report or the schedule of attempts is over, and tells of each step.
/// Between the steps it waits on the loop; it blocks nobody.
///
/// Use from the main thread.
class UploadOperation : public orrenby::AsyncBaseOperation {
public:
    using Progress = orrenby::Streams::PassthroughSubject<UploadProgress, orrenby::Never>;

    /// Three attempts more, after 2, 4 and 8 seconds.
    /// @param loop          Outlives the operation's work.
    /// @param secondLength  Seconds of real time that a second takes.
    UploadOperation(EventLoop& loop, int number, Progress progress, double secondLength);

    void execute(Completion completion) override;

    /// Stops waiting, too.
    void cancel() override;

private:
    void attempt();
    void hear(bool isAccepted);
    void tell(UploadProgress::Step step, double seconds = 0);
    void wait(double seconds, EventLoop::Callback callback);
    void end(UploadProgress::Step step);

    EventLoop& m_loop;
    int m_number;
    Progress m_progress;
    double m_secondLength;
    orrenby::Retry m_retry{2, 3, orrenby::Retry::Exponential{2}};
    int m_attempt = 0;
    EventLoop::Watch m_timer;
};

} // namespace fieldbook
