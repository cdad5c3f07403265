#pragma once

/// @file
/// Reading bodies of several parts.

#include "Service/ServiceRequest.hpp"
#include <optional>
#include <string_view>
#include <vector>

namespace fieldbook {

/// The parts of a body whose "Content-Type" is `multipart/form-data; boundary=…`, byte for byte. Nothing for
/// another type, and for a body that does not end with its closing delimiter.
///
/// For services that get bodies as a whole, without sockets. Linear.
std::optional<std::vector<ServicePart>> partsIn(std::string_view body, std::string_view contentType);

} // namespace fieldbook
