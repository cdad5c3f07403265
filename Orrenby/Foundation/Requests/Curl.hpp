#pragma once

/// @file
/// Requests as command lines.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URLRequest.hpp"
#include "Orrenby/Platform/Objects/Pipeable.hpp"
#include <string>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

ORRENBY_EXPORT std::string curlCommand(const URLRequest& request);

} // namespace detail

/// A command line for a POSIX shell that makes curl send this request, to be tried by hand.
///
/// Whatever the request consists of is quoted: the shell runs nothing of it. A body that is plain text stands
/// there as it is; any other is written by `printf` and read by curl, so that bytes and line ends survive
/// copying the text. Header fields whose name is no name for HTTP are left out, because curl would read files
/// for some; curl adds those of its own that the request does not have ("Accept", "User-Agent", "Host").
///
/// Everything is in it, tokens included: it is nothing for a log.
///
/// @snippet Tests/Foundation/Requests/CurlTests.cpp Trying a request by hand
///
/// Linear; bytes that are no plain text take up to four characters each. Safe to use from several threads.
inline constexpr auto toCurl = pipeable<const URLRequest&>(
    [](const URLRequest& request) { return detail::curlCommand(request); });

} // namespace orrenby
