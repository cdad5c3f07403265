#include "Report/ReportDecoding.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Report/DecodingProblem.hpp"

namespace fieldbook {

orrenby::JSONDecoder::DateDecodingStrategy datesOfReports()
{
    return orrenby::JSONDecoder::DateDecodingStrategy::formatted(orrenby::DateFormatters::halvetServer());
}

orrenby::Result<Report, std::string> decodedReport(std::string_view text)
{
    using Outcome = orrenby::Result<Report, std::string>;
    try {
        orrenby::JSONDecoder decoder;
        decoder.setDateDecodingStrategy(datesOfReports());
        return Outcome::success(decoder.decode<Report>(text));
    } catch (const orrenby::DecodingError& error) {
        return Outcome::failure(explain(error));
    }
}

} // namespace fieldbook
