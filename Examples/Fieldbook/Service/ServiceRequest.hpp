#pragma once

/// @file
/// What a service is asked, and what it answers: values that know nothing of sockets.

#include "Orrenby/Platform/Net/HTTPHeaders.hpp"
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fieldbook {

/// One part of a multipart body.
struct ServicePart {
    std::string name;
    std::string fileName;  ///< Empty for a plain field.
    std::string mediaType; ///< As it was said; empty when nothing was.
    std::string content;   ///< Bytes.

    friend bool operator==(const ServicePart&, const ServicePart&) = default;
};

/// A request that has arrived as a whole.
struct ServiceRequest {
    std::string method;                         ///< In upper case.
    std::string path;                           ///< Without query.
    std::map<std::string, std::string> headers; ///< By name, in lower case.
    std::string body;                           ///< Empty where there are parts.
    std::vector<ServicePart> parts;

    /// Empty where there is none. @param name  In lower case.
    std::string_view header(const std::string& name) const
    {
        const auto entry = headers.find(name);
        return entry != headers.end() ? std::string_view(entry->second) : std::string_view();
    }

    /// The first part of this name, or nothing.
    const ServicePart* part(std::string_view name) const
    {
        for (const auto& part : parts)
            if (part.name == name)
                return &part;
        return nullptr;
    }
};

/// What is answered, and how it gets there. The body is JSON.
struct ServiceResponse {
    int status = 200;
    std::string body = "{}";
    orrenby::HTTPHeaders headers = {};
    double latency = 0; ///< Seconds that pass before it leaves.
    bool isCut = false; ///< Whether the connection breaks before all of the body is through.

    friend bool operator==(const ServiceResponse&, const ServiceResponse&) = default;
};

} // namespace fieldbook
