#pragma once

/// @file
/// Bytes of URLs that stand as "%" and two digits. Not in the umbrella header: part of the URLs' own
/// workings.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Net/URLGrammar.hpp"
#include <string>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The text with each byte escaped that may not stand in the part as it is, or that is one of `also`. Any
/// bytes will do. Linear.
std::string escapedForURL(std::string_view text, URLPart part, std::string_view also = {});

/// The text with each byte escaped that may not stand in the part, escapes left as they are. A "%" without
/// two digits is escaped. Linear.
std::string mendedForURL(std::string_view text, URLPart part);

/// The bytes that the text stands for. A "%" without two digits stays. Linear.
std::string unescapedFromURL(std::string_view text);

} // namespace orrenby::inline ORRENBY_ABI::detail
