#pragma once

/// @file
/// Which e-mail addresses people sign in with.

#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include <string>
#include <string_view>

namespace fieldbook {

/// The address, if it is well-formed and somebody reads what is sent to it: no `noreply` before the "@". The
/// failure is one line for whoever typed it: `"ines@hut", character 9: The domain has no dot.`
orrenby::Result<orrenby::EmailAddress, std::string> addressToSignIn(std::string_view text);

} // namespace fieldbook
