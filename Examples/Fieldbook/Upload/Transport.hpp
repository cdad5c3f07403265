#pragma once

/// @file
/// How requests leave the application.

#include "Orrenby/Platform/Net/BodyStream.hpp"
#include "Orrenby/Platform/Net/HTTPHeaders.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Utilities/Streams/AnyPublisher.hpp"
#include <cstdint>
#include <string>
#include <variant>

namespace fieldbook {

/// Part of a body is on its way.
struct BytesSent {
    std::uint64_t sent = 0;
    std::uint64_t total = 0;

    friend bool operator==(const BytesSent&, const BytesSent&) = default;
};

/// The service answered, whatever it says.
struct Answer {
    int status = 0;
    std::string body;
    orrenby::HTTPHeaders headers = {};

    friend bool operator==(const Answer&, const Answer&) = default;
};

using TransportNews = std::variant<BytesSent, Answer>;

/// Why there is no answer.
struct TransportFailure {
    enum class Kind {
        noConnection,   ///< Nobody listens there, or there is no way.
        timedOut,       ///< Nothing happened for as long as the request allows.
        bodyUnreadable, ///< A file of the body is not what it was.
        brokenOff,      ///< Everything else on the way.
        malformed       ///< The request cannot be sent as it is.
    };

    Kind kind;
    std::string reason; ///< One line.

    friend bool operator==(const TransportFailure&, const TransportFailure&) = default;
};

/// Sends requests. The application knows this interface alone, so that a test can answer in its place.
class Transport {
public:
    using News = orrenby::Streams::AnyPublisher<TransportNews, TransportFailure>;

    Transport() = default;
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;
    virtual ~Transport() = default;

    /// Begins to send when somebody subscribes, once. On the main thread it tells how much of the body is on
    /// its way, then the answer or why there is none. Dropping the subscription breaks the sending off.
    ///
    /// @param body  Is sent instead of a body that the request itself has.
    virtual News send(orrenby::URLRequest request, orrenby::BodyStream body) = 0;
};

} // namespace fieldbook
