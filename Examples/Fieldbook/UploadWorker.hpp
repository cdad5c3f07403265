#pragma once

/// @file
/// The worker that uploads reports.

#include "Counted.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Scheduling/OperationQueue.hpp"
#include "Orrenby/Utilities/Discover/AbstractWorker.hpp"
#include "Service/ReportService.hpp"
#include "Service/ServiceServer.hpp"
#include "Session.hpp"
#include "Transport.hpp"
#include "UploadOperation.hpp"
#include <memory>
#include <set>
#include <string>

namespace fieldbook {

/// Uploads reports, two at a time (one in a script without pauses), and shows how that goes. What is on its
/// way when it stops is cancelled.
///
/// Reports go to the service of the session. If there is none, it starts one of its own on this machine with
/// the first upload.
class UploadWorker : public orrenby::AbstractWorker, Counted<Part::worker> {
public:
    /// @param session  Outlives the worker.
    explicit UploadWorker(Session& session);
    ~UploadWorker() override;

    /// Queues every readable report that was not sent yet. Somebody has to be signed in.
    void uploadAll();

    /// Calls `whenDone` once nothing is on its way: at once, if nothing is.
    void waitForUploads(orrenby::UniqueFunction<void()> whenDone);

protected:
    void didStart() override;
    void willStop() override;

private:
    bool prepare();
    std::optional<orrenby::URL> findService();
    void show(const UploadProgress& progress);
    void say(Style style, const std::string& text);
    void callWhenDone();

    Session& m_session;
    ReportService m_service;
    std::unique_ptr<ServiceServer> m_server; ///< Only where the service is its own.
    std::unique_ptr<Transport> m_transport;
    orrenby::Ref<UploadDestination> m_destination;
    orrenby::OperationQueue m_queue;
    UploadOperation::Progress m_progress;
    std::set<int> m_taken; ///< Numbers that were queued or sent. Those given up may be tried again.
    std::set<int> m_open;  ///< Those of them that are queued or on their way.
    orrenby::UniqueFunction<void()> m_whenDone;
};

} // namespace fieldbook
