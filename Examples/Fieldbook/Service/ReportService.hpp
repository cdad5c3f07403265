#pragma once

/// @file
/// The service that reports are sent to, without its sockets.

#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Report/Report.hpp"
#include "Service/Mood.hpp"
#include "Service/ServiceRequest.hpp"
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fieldbook {

/// A report as it arrived.
struct ReceivedReport {
    int number = 0;
    orrenby::EmailAddress sender;
    Report report;
    std::optional<ServicePart> photo;
    std::string text = {}; ///< The report's own bytes.

    friend bool operator==(const ReceivedReport&, const ReceivedReport&) = default;
};

/// What a service is like.
struct ReportServiceOptions {
    /// Whether the `attempt`-th arrival (from 1) of this report is taken.
    bool (*mood)(int number, int attempt) = isAlwaysTaken;
    /// What it has to tell before anybody sent something.
    std::vector<Report> feed = {};
    /// Puts a report where it outlives the service, and gives why it cannot. Called for one at a time.
    std::function<std::optional<std::string>(const ReceivedReport&)> keep = {};
};

/// Signs people in, takes reports, and tells of reports. Every answer is JSON; one that refuses is an object
/// with a member `problem`, a sentence.
///
///     POST /session      {"address": "ines@hut.example"}        201 {"token": "…"}
///     GET  /reports                                             200 [{"title": "…", …}, …]
///     POST /reports      signed; a report                       201 {"number": 10001, "photoBytes": 0}
///     PUT  /reports/4    signed; a report                       201 {"number": 4, "photoBytes": 73421}
///
/// A report is the body, as JSON, or the part `report` beside a part `photo`, which may be missing. It is
/// signed with the token in the header field "Authorization", as `signed_` writes it.
///
/// The same number again replaces the report. One that is posted gets a number of its own; sent twice with
/// the same header field "Idempotency-Key" by the same person it is taken once, and answered twice. Those
/// that were posted join the list that everybody may get.
///
/// It refuses with 400 what it cannot read, 401 what is not signed, 404 and 405 what it does not know, 415 a
/// photo that is no image, 503 when it is in no mood, and 507 when a report cannot be kept.
///
/// Everything is kept in memory, for as long as the service lives. Safe to use from several threads.
class ReportService {
public:
    using Mood = bool (*)(int number, int attempt);

    /// The first number of a report that is posted. Applications number their own from 1.
    static constexpr int firstPosted = 10'001;

    explicit ReportService(ReportServiceOptions options = {});
    explicit ReportService(Mood mood)
        : ReportService(ReportServiceOptions{.mood = mood})
    {}

    ServiceResponse handle(const ServiceRequest& request);

    /// What was taken, in the order of numbers.
    std::vector<ReceivedReport> received() const;

    /// Forgets who is signed in, as a service does that was started again.
    void forgetTokens();

private:
    ServiceResponse signIn(const ServiceRequest& request);
    ServiceResponse list() const;
    ServiceResponse post(const ServiceRequest& request);
    ServiceResponse put(int number, const ServiceRequest& request);
    ServiceResponse take(int number, const orrenby::EmailAddress& sender, const ServiceRequest& request);
    std::optional<orrenby::EmailAddress> senderOf(const ServiceRequest& request) const;

    mutable std::mutex m_mutex;
    ReportServiceOptions m_options;
    std::map<std::string, orrenby::EmailAddress> m_tokens;
    std::map<int, int> m_attempts; ///< By number.
    std::map<int, ReceivedReport> m_received;
    int m_nextPosted = firstPosted;
    std::map<std::pair<std::string, std::string>, int> m_posted; ///< Numbers by sender and key.
};

} // namespace fieldbook
