#pragma once

/// @file
/// An empty cache of formatters for one test. Not in the umbrella header: part of the test kit's worlds.

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"

namespace orrenby::inline ORRENBY_ABI::testing {

/// Puts an empty cache in the place of the one that the shared formatters are kept in, and at its end puts
/// that one back. So no formatter goes from one test to another with the locale that it was made for.
///
/// Not synchronised: two nest like the scopes that they stand in.
class ORRENBY_EXPORT FreshDateFormatters {
public:
    FreshDateFormatters();
    FreshDateFormatters(const FreshDateFormatters&) = delete;
    FreshDateFormatters& operator=(const FreshDateFormatters&) = delete;
    ~FreshDateFormatters();

private:
    Ref<DateFormatters::FormatterCache> m_previous;
};

} // namespace orrenby::testing
