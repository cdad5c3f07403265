#include "Orrenby/Testing/FreshDateFormatters.hpp"

#include <memory>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::testing {

FreshDateFormatters::FreshDateFormatters()
    : m_previous(DateFormatters::cache())
{
    DateFormatters::setCache(std::make_shared<DateFormatters::FormatterCache>());
}

FreshDateFormatters::~FreshDateFormatters() { DateFormatters::setCache(std::move(m_previous)); }

} // namespace orrenby::testing
