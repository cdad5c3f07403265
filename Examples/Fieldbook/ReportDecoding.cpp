#include "ReportDecoding.hpp"

#include "DecodingProblem.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONDecoder.hpp"

namespace fieldbook {

orrenby::Result<Report, std::string> decodedReport(std::string_view text)
{
    using Outcome = orrenby::Result<Report, std::string>;
    try {
        return Outcome::success(orrenby::JSONDecoder().decode<Report>(text));
    } catch (const orrenby::DecodingError& error) {
        return Outcome::failure(explain(error));
    }
}

} // namespace fieldbook
