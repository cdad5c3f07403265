#include "Orrenby/Utilities/ServiceDecoder/DecodingReport.hpp"

#include "Orrenby/Platform/Coding/DecodingError.hpp"

namespace orrenby::inline ORRENBY_ABI {

std::string DecodingFailure::description() const
{
    std::string result;
    for (const auto& key : codingPath)
        result += (result.empty() ? "" : " > ") + key.stringValue();
    if (codingPath.empty())
        result = "the root";
    const auto* decodingError = error.cast<DecodingError>();
    const auto reason = decodingError != nullptr ? decodingError->context().debugDescription
                                                 : error.description();
    return result + ", " + position.description() + ": " + reason + ": " + excerpt;
}

std::string DecodingReport::description() const
{
    std::string result;
    for (const auto& failure : failures)
        result += (result.empty() ? "" : "\n") + failure.description();
    return result;
}

} // namespace orrenby
