#pragma once

/// @file
/// The worker that uploads reports.

#include "Counted.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Session.hpp"
#include "UploadOperation.hpp"
#include <set>

namespace fieldbook {

/// Uploads reports, two at a time (one in a script without pauses), and shows how that goes. What is on its
/// way when it stops is cancelled.
class UploadWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit UploadWorker(Session& session);
    ~UploadWorker() override;

    /// Queues every readable report that was not sent yet.
    void uploadAll();

    /// Calls `whenDone` once nothing is on its way: at once, if nothing is.
    void waitForUploads(orrenby::UniqueFunction<void()> whenDone);

protected:
    void didStart() override;
    void willStop() override;

private:
    void show(const UploadProgress& progress);
    void callWhenDone();

    Session& m_session;
    orrenby::OperationQueue m_queue;
    UploadOperation::Progress m_progress;
    std::set<int> m_taken; ///< Numbers that were queued or sent. Those given up may be tried again.
    int m_openCount = 0;
    orrenby::UniqueFunction<void()> m_whenDone;
};

} // namespace fieldbook
