#include "Orrenby/Utilities/Log/ErrorInfo.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include <algorithm>

namespace orrenby::inline ORRENBY_ABI {

namespace Log {

std::vector<ErrorInfo> nonCriticalErrors()
{
    return {
        {NSURLErrorDomain, -999},  // cancelled
        {NSURLErrorDomain, -1005}, // connection lost
        {NSURLErrorDomain, -1009}, // not connected
        {NSURLErrorDomain, -1200}, // secure connection failed
        {NSURLErrorDomain, -1001}, // timed out
    };
}

} // namespace Log

namespace detail {

bool matchesAny(const NSError& error, const std::vector<Log::ErrorInfo>& list)
{
    return std::any_of(list.begin(), list.end(), [&](const Log::ErrorInfo& info) {
        return info.code() == error.code() && info.domain() == error.domain();
    });
}

NSError thrownNSError(const std::exception_ptr& thrown) { return AnyError(thrown).nsError(); }

} // namespace detail

} // namespace orrenby
