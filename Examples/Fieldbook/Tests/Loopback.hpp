#pragma once

/// @file
/// Whether programs of this machine reach one another.

#include "Examples/Fieldbook/Terminal/Descriptor.hpp"
#include <arpa/inet.h>
#include <cerrno>
#include <cstdint>
#include <netinet/in.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <system_error>

namespace fieldbook {

/// Why nobody reaches who listens at this port of 127.0.0.1; nothing where somebody does. There are machines
/// whose own address is switched off.
inline std::optional<std::string> whyUnreachable(int port)
{
    const auto caller = Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (caller
        && ::connect(caller.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return {};
    return "127.0.0.1 cannot be reached: " + std::generic_category().message(errno);
}

} // namespace fieldbook
