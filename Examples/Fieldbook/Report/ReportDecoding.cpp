#include "Report/ReportDecoding.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Utilities/ServiceDecoder/DecodeReport.hpp"
#include "Report/DecodingProblem.hpp"

namespace fieldbook {

namespace {

/// A report, if it can be read.
struct Member {
    std::optional<Report> report;

    static Member init(const orrenby::Decoder& decoder)
    {
        try {
            return {decoder.singleValueContainer().decode<Report>()};
        } catch (const orrenby::DecodingError&) {
            return {};
        }
    }
};

struct ReportDecoder : orrenby::JSONDecoder {
    ReportDecoder() { setDateDecodingStrategy(datesOfReports()); }
};

std::vector<std::string> problemsIn(std::string_view text)
{
    std::vector<std::string> problems;
    for (const auto& failure : orrenby::decodeReport<std::vector<Report>>(text, ReportDecoder()).failures)
        if (const auto* const error = failure.error.cast<orrenby::DecodingError>())
            problems.push_back(explain(*error));
    return problems;
}

} // namespace

orrenby::JSONDecoder::DateDecodingStrategy datesOfReports()
{
    return orrenby::JSONDecoder::DateDecodingStrategy::formatted(orrenby::DateFormatters::halvetServer());
}

orrenby::Result<Report, std::string> decodedReport(std::string_view text)
{
    using Outcome = orrenby::Result<Report, std::string>;
    try {
        return Outcome::success(ReportDecoder().decode<Report>(text));
    } catch (const orrenby::DecodingError& error) {
        return Outcome::failure(explain(error));
    }
}

orrenby::Result<DecodedReports, std::string> decodedReports(std::string_view text)
{
    using Outcome = orrenby::Result<DecodedReports, std::string>;
    try {
        DecodedReports result;
        for (auto& member : ReportDecoder().decode<std::vector<Member>>(text))
            result.reports.push_back(std::move(member.report));
        result.problems = problemsIn(text);
        return Outcome::success(std::move(result));
    } catch (const orrenby::DecodingError& error) {
        // In the words for reports, which are what people expect there.
        const auto problems = problemsIn(text);
        return Outcome::failure(problems.empty() ? explain(error) : problems.front());
    }
}

} // namespace fieldbook
