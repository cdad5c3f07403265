#pragma once

/// @file
/// A language and a time zone that a test chooses.

#include "Orrenby/Platform/Export.hpp"
#include <memory>
#include <string>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Where a test is, unless it chooses otherwise: the same on every machine.
struct LocaleOverrideOptions {
    std::string locale = "en_US"; ///< What texts for people follow.
    /// A name or an offset, `Europe/Berlin` or `GMT+2`.
    std::string timeZone = "GMT";
};

/// Replaces the current locale and the system's time zone while it lives, and the cache of the shared
/// formatters of dates by an empty one. Time passes as before.
///
/// @snippet Tests/Testing/LocaleOverrideTests.cpp Dates in German
///
/// Several nest like the scopes they stand in, worlds of tests among them. Not synchronised: threads that
/// read the locale must have started after it and be done before it ends.
class ORRENBY_EXPORT LocaleOverride {
public:
    /// Throws `std::invalid_argument` for a zone that is not in the tables.
    explicit LocaleOverride(const LocaleOverrideOptions& options = {});
    LocaleOverride(const LocaleOverride&) = delete;
    LocaleOverride& operator=(const LocaleOverride&) = delete;
    ~LocaleOverride();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace orrenby::testing
