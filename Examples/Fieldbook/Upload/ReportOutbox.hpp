#pragma once

/// @file
/// The reports that are to be sent, in the store.

#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include "Orrenby/Platform/Net/BodyStream.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include "Store/Memory.hpp"
#include "Upload/Photo.hpp"
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// A report that is to be sent.
struct OutgoingReport {
    int number = 0;
    Report report;
    std::optional<Photo> photo;
    std::string file = {}; ///< From which it comes, as the feed names it.
};

/// Reports that are to be sent, for whom and in whose name.
struct Shipment {
    std::vector<OutgoingReport> reports;
    std::optional<orrenby::URL> service; ///< Nothing for the service of the program's own.
    orrenby::EmailAddress sender;
};

/// A report that is in the outbox.
struct QueuedReport {
    int number = 0;
    orrenby::EmailAddress sender;
    /// Where it is to be sent; nothing for the service of the program's own.
    std::optional<orrenby::URL> service;
    orrenby::Ref<orrenby::OutboxEntry> entry;
};

/// What became of a shipment.
struct PutReports {
    std::vector<QueuedReport> queued;
    std::map<int, std::string> problems; ///< Why others were not put in, by number.
};

/// A request, and the body that is sent with it.
struct SignedRequest {
    orrenby::URLRequest request;
    orrenby::BodyStream body;
};

/// The outbox of the application: what waits there survives the end of the program, also one in the middle
/// of an upload, with the number of its attempts.
///
/// Which report was asked for, and which is done, is noted in the same save. A report may be delivered twice
/// when the program ends between the answer and its being noted; all its attempts bear one key, by which the
/// service can tell. What has to be saved and cannot be throws an `orrenby::StoreError`.
///
/// Use from the main thread.
class ReportOutbox {
public:
    /// What was on its way when the last run ended waits again.
    explicit ReportOutbox(std::shared_ptr<Memory> memory);

    /// Puts reports in, all with one save. What was refused under their numbers goes out. One whose photo
    /// cannot be opened stays out, and so does what the outbox has no room for.
    PutReports put(const Shipment& shipment);

    /// What waits, in the order in which it was put in.
    std::vector<QueuedReport> waiting() const;

    /// How many wait or are on their way, now and after each change.
    orrenby::Streams::AnyPublisher<std::size_t, orrenby::StoreError> waitingCount() const;

    /// The request with a token, and its body: the report as JSON and, behind it, its photo, which is read
    /// from its file while it is sent.
    ///
    /// @param service  Where it is sent in fact.
    /// @throws orrenby::BodyStreamError  if the photo is not what it was when the report was put in.
    static SignedRequest request(
        const orrenby::OutboxEntry& entry, const orrenby::URL& service, std::string_view token);

    /// Counts an attempt. Nothing is sent before that.
    ///
    /// @returns Its number; nothing when the report is not to be sent any more.
    std::optional<int> begin(const QueuedReport& report);
    /// The attempt failed, and another one is not made before that moment.
    void wait(const QueuedReport& report, orrenby::Date notBefore, std::string_view reason);
    /// Trying again is no use.
    void refuse(const QueuedReport& report, std::string_view reason);
    /// The service has it.
    void finish(const QueuedReport& report);

private:
    void removeRefused(const Shipment& shipment);
    QueuedReport putOne(const OutgoingReport& report, const Shipment& shipment);

    std::shared_ptr<Memory> m_memory;
    orrenby::Outbox m_outbox;
};

} // namespace fieldbook
