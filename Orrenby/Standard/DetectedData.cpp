#include "Orrenby/Standard/DetectedData.hpp"

#include "Orrenby/Platform/Text/DataDetector.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

/// Whether the text has a link of which this is true. Stops at the first.
template <class Predicate> bool containsLink(std::string_view text, Predicate isWanted)
{
    DataDetector::Scan scan(DataDetector(DataKind::Link), text);
    while (const auto match = scan.next())
        if (isWanted(match->scheme()))
            return true;
    return false;
}

} // namespace

bool containsAddress(std::string_view text)
{
    return DataDetector(DataKind::Address).firstMatch(text).has_value();
}

bool containsPhoneNumber(std::string_view text)
{
    return DataDetector(DataKind::PhoneNumber).firstMatch(text).has_value();
}

bool containsURL(std::string_view text)
{
    return containsLink(text, [](std::string_view scheme) { return !scheme.empty() && scheme != "mailto"; });
}

bool containsEmail(std::string_view text)
{
    return containsLink(text, [](std::string_view scheme) { return scheme == "mailto"; });
}

bool containsHyperlink(std::string_view text)
{
    return DataDetector(DataKind::Link).firstMatch(text).has_value();
}

std::vector<DataMatch> detect(std::string_view text) { return DataDetector(DataKind::All).matches(text); }

} // namespace orrenby
