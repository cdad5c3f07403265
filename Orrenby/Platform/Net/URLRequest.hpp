#pragma once

/// @file
/// What is asked of a service.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/HTTPHeaders.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// An address, a method, header fields, and a body or none.
///
/// Nothing is sent: that is the business of the application's own networking, which reads the parts. The
/// operations that build requests stand in Foundation/URLRequest+Builder.hpp.
///
/// @snippet Tests/Platform/Net/URLRequestTests.cpp Describing what is asked
///
/// A body that is present and empty differs from none. A plain value: copying it copies the body, moving it
/// does not. Not synchronised.
class ORRENBY_EXPORT URLRequest {
public:
    static constexpr std::string_view printedTypeName = "URLRequest";

    /// In seconds.
    static constexpr double defaultTimeoutInterval = 60;

    /// A request by "GET", without header fields and body.
    explicit URLRequest(URL url, double timeoutInterval = defaultTimeoutInterval);

    /// Where it goes; a relative URL is the transport's to refuse.
    const URL& url() const noexcept { return m_url; }
    void setURL(URL url) { m_url = std::move(url); }

    /// As it is sent, hence in upper case for the usual ones. Not checked.
    const std::string& httpMethod() const noexcept { return m_httpMethod; }
    void setHTTPMethod(std::string_view method) { m_httpMethod.assign(method); }

    /// All header fields at once.
    const HTTPHeaders& httpHeaders() const noexcept { return m_httpHeaders; }
    void setHTTPHeaders(HTTPHeaders headers) { m_httpHeaders = std::move(headers); }

    /// The header field's value, or nothing. Names compare without case.
    std::optional<std::string> httpHeader(std::string_view name) const { return m_httpHeaders.value(name); }

    /// Replaces the header field's value; removes the field when there is no value.
    void setHTTPHeader(std::string_view name, std::optional<std::string_view> value);

    /// The bytes that are sent; an empty body is there, and differs from none.
    const std::optional<Data>& httpBody() const noexcept { return m_httpBody; }
    void setHTTPBody(std::optional<Data> body) noexcept;

    /// The body, which the request has no longer; to be grown without a copy.
    std::optional<Data> takeHTTPBody() noexcept;

    /// How long a transport is to wait for anything to happen, in seconds. Not checked.
    double timeoutInterval() const noexcept { return m_timeoutInterval; }
    void setTimeoutInterval(double seconds) noexcept { m_timeoutInterval = seconds; }

    /// `POST https://example.org/reports, 2 header fields, body of 15 bytes`. Values of header fields stay
    /// out of it, because they may be secrets.
    std::string description() const;

    /// Linear in the body.
    std::size_t hash() const noexcept;
    friend bool operator==(const URLRequest&, const URLRequest&) = default;

private:
    URL m_url;
    std::string m_httpMethod = "GET";
    HTTPHeaders m_httpHeaders;
    std::optional<Data> m_httpBody;
    double m_timeoutInterval;
};

} // namespace orrenby

template <> struct std::hash<orrenby::URLRequest> {
    std::size_t operator()(const orrenby::URLRequest& value) const noexcept { return value.hash(); }
};
