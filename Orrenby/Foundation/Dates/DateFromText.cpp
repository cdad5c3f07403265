#include "Orrenby/Foundation/Dates/DateFromText.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::optional<Date> date(std::string_view text) { return DateFormatters::halvetServer()->date(text); }

} // namespace orrenby
