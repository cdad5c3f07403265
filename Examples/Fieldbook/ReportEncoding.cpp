#include "ReportEncoding.hpp"

#include "Orrenby/Platform/Coding/AggregateCoding.hpp"
#include "Orrenby/Platform/Coding/JSONEncoder.hpp"

namespace fieldbook {

std::string encodedReport(const Report& report)
{
    orrenby::JSONEncoder encoder;
    encoder.setOutputFormatting({.prettyPrinted = true});
    return encoder.encodeText(report) + '\n';
}

} // namespace fieldbook
