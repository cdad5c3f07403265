#pragma once

/// @file
/// Links into the application.

#include "Orrenby/Utilities/Discover/ResponderChain.hpp"
#include <optional>
#include <string>
#include <string_view>

namespace fieldbook {

/// A text such as `fieldbook://report/42`. Flows say which links are theirs.
struct DeepLink {
    static constexpr std::string_view scheme = "fieldbook://";

    std::string text;

    /// The number of `fieldbook://report/NUMBER`, if it is such a link.
    std::optional<int> report() const;
};

/// Asks the flows, in the order in which they entered.
using DeepLinks = orrenby::ResponderChain<DeepLink>;

} // namespace fieldbook
