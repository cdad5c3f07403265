#include "Upload/AttemptFailure.hpp"

#include "Upload/ReportRequests.hpp"
#include "Upload/RetryAfter.hpp"

namespace fieldbook {

namespace {

/// Whether the service may think better of it.
bool isPassing(int status) { return status == 429 || status >= 500; }

} // namespace

bool isDone(int status) { return status >= 200 && status < 300; }

AttemptFailure failureOf(const Answer& answer)
{
    auto reason = "status " + std::to_string(answer.status);
    if (const auto problem = problemIn(answer.body))
        reason += ", \"" + *problem + '"';
    return {std::move(reason), isPassing(answer.status), secondsToRetryAfter(answer).value_or(0)};
}

AttemptFailure failureOf(const TransportFailure& failure)
{
    using Kind = TransportFailure::Kind;
    switch (failure.kind) {
    case Kind::noConnection:
        return {"no connection: " + failure.reason, true};
    case Kind::timedOut:
        return {"no answer in time", true};
    case Kind::brokenOff:
        return {"broken off: " + failure.reason, true};
    case Kind::bodyUnreadable:
    case Kind::malformed:
        break;
    }
    return {failure.reason};
}

} // namespace fieldbook
