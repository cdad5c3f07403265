#pragma once

/// @file
/// Why an e-mail address is not accepted.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Printing.hpp"
#include "Orrenby/Platform/Text/EmailPatternMismatch.hpp"
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// The first step or rule that refuses an address. Made by `EmailAddress::Validator::explain`.
///
/// A rule of one's own gives one with its `position` and its `sentence`; the validator adds which rule it
/// was.
///
/// A plain value. Not synchronised.
struct EmailAddressRefusal {
    /// The place among the validator's rules. Nothing when the pattern refuses.
    std::optional<std::size_t> rule{};
    /// The piece in which the pattern fails. Nothing when a rule refuses.
    std::optional<EmailPatternPiece> piece{};
    /// Where it shows, in bytes; the length of the text when something is missing at its end.
    std::size_t position = 0;
    /// One sentence in English.
    std::string sentence{};

    const std::string& description() const noexcept { return sentence; }

    friend bool operator==(const EmailAddressRefusal&, const EmailAddressRefusal&) = default;
};

} // namespace orrenby

template <> struct std::hash<orrenby::EmailAddressRefusal> {
    std::size_t operator()(const orrenby::EmailAddressRefusal& refusal) const noexcept
    {
        return std::hash<std::string>{}(refusal.sentence) * 0x9E3779B97F4A7C15U + refusal.position;
    }
};
