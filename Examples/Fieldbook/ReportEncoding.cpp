#include "ReportEncoding.hpp"

#include "Orrenby/Foundation/Dates/DateFormatters.hpp"
#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"

namespace fieldbook {

std::string encodedReport(const Report& report)
{
    orrenby::JSONEncoder encoder;
    encoder.setDateEncodingStrategy(
        orrenby::JSONEncoder::DateEncodingStrategy::formatted(orrenby::DateFormatters::halvetServer()));
    encoder.setOutputFormatting({.prettyPrinted = true});
    return encoder.encodeText(report) + '\n';
}

} // namespace fieldbook
