#pragma once

/// @file
/// The service that reports are sent to, without its sockets.

#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Report.hpp"
#include "Service/ServiceRequest.hpp"
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace fieldbook {

/// A report as it arrived.
struct ReceivedReport {
    int number = 0;
    orrenby::EmailAddress sender;
    Report report;
    std::optional<ServicePart> photo;

    friend bool operator==(const ReceivedReport&, const ReceivedReport&) = default;
};

/// Signs people in and takes reports. Every answer is a JSON object; one that refuses has a member `problem`,
/// a sentence.
///
///     POST /session      {"address": "ines@hut.example"}        201 {"token": "…"}
///     PUT  /reports/4    signed; parts `report` and `photo`     201 {"number": 4, "photoBytes": 73421}
///
/// A report is signed with the token in the header field "Authorization", as `signed_` writes it. The photo
/// may be missing. The same number again replaces the report. It refuses with 400 what it cannot read, 401
/// what is not signed, 404 and 405 what it does not know, 415 a photo that is no image, and 503 when it is in
/// no mood.
///
/// Everything is kept in memory, for as long as the service lives. Safe to use from several threads.
class ReportService {
public:
    /// Whether the `attempt`-th arrival (from 1) of this report is taken.
    using Mood = bool (*)(int number, int attempt);

    explicit ReportService(Mood mood);

    ServiceResponse handle(const ServiceRequest& request);

    /// What was taken, in the order of numbers.
    std::vector<ReceivedReport> received() const;

    /// Forgets who is signed in, as a service does that was started again.
    void forgetTokens();

private:
    ServiceResponse signIn(const ServiceRequest& request);
    ServiceResponse take(int number, const ServiceRequest& request);
    std::optional<orrenby::EmailAddress> senderOf(const ServiceRequest& request) const;

    mutable std::mutex m_mutex;
    Mood m_mood;
    std::map<std::string, orrenby::EmailAddress> m_tokens;
    std::map<int, int> m_attempts; ///< By number.
    std::map<int, ReceivedReport> m_received;
};

} // namespace fieldbook
