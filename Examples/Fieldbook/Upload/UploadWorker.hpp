#pragma once

/// @file
/// The worker that uploads reports.

#include "Application/Counted.hpp"
#include "Application/Session.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Remote/RemoteService.hpp"
#include "Upload/UploadOperation.hpp"
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fieldbook {

/// Uploads reports, two at a time (one in a script without pauses), and shows how that goes. What is on its
/// way when it stops is cancelled.
///
/// What is to be sent stands in the outbox of the session's memory until the service has it, so that another
/// run, or the worker when it is started again, can go on. What the service refused is not tried again unless
/// somebody asks; what failed for reasons that pass goes on with the next run, too.
///
/// Reports go to the service of the session, apart from those that come from there.
class UploadWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit UploadWorker(Session& session);
    ~UploadWorker() override;

    /// Queues every readable report that was not sent yet, and what still waits in the outbox. Somebody has
    /// to be signed in.
    void uploadAll();

    /// Queues what still waits in the outbox, for whoever put it in.
    void resume();

    /// Calls `whenDone` once nothing is on its way: at once, if nothing is. One waits at a time: whoever
    /// waited before is not called any more, and nobody is once the worker has stopped.
    void waitForUploads(orrenby::UniqueFunction<void()> whenDone);

protected:
    void didStart() override;
    void willStop() override;

private:
    std::vector<QueuedReport> putIn();
    std::vector<QueuedReport> waiting() const;
    void queue(const QueuedReport& report);
    orrenby::Ref<UploadDestination> destinationOf(const QueuedReport& report);
    RemoteService& remote();
    void show(const UploadProgress& progress);
    void say(Style style, const std::string& text);
    void say(const orrenby::StoreError& error);
    void endBatch();
    void callWhenDone();

    Session& m_session;
    std::shared_ptr<RemoteService> m_remote; ///< From the first upload on.
    std::shared_ptr<ReportOutbox> m_outbox;
    /// By address and user: uploads share what they know of both.
    std::map<std::pair<std::string, std::string>, orrenby::Ref<UploadDestination>> m_destinations;
    orrenby::OperationQueue m_queue;
    UploadOperation::Progress m_progress;
    std::set<int> m_open; ///< Numbers that are queued or on their way.
    orrenby::UniqueFunction<void()> m_whenDone;
};

} // namespace fieldbook
