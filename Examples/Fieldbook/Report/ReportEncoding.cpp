#include "Report/ReportEncoding.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"

namespace fieldbook {

namespace {

std::string encoded(const auto& value)
{
    orrenby::JSONEncoder encoder;
    encoder.setDateEncodingStrategy(
        orrenby::JSONEncoder::DateEncodingStrategy::formatted(orrenby::DateFormatters::halvetServer()));
    encoder.setOutputFormatting({.prettyPrinted = true});
    return encoder.encodeText(value) + '\n';
}

} // namespace

std::string encodedReport(const Report& report) { return encoded(report); }

std::string encodedReports(const std::vector<Report>& reports) { return encoded(reports); }

} // namespace fieldbook
