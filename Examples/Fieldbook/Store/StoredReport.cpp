#include "Store/StoredReport.hpp"

#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Report/ReportDecoding.hpp"
#include "Report/ReportEncoding.hpp"

namespace fieldbook {

namespace {

/// What is shown on terminals passes the same checks, wherever it comes from.
bool isFit(const Report& report)
{
    try {
        return decodedReport(encodedReport(report)).isSuccess();
    } catch (const orrenby::EncodingError&) {
        return false; // no UTF-8
    }
}

} // namespace

void StoredReport::take(const Report& report)
{
    title = report.title.text;
    place = report.place.text;
    observer = report.observer.text;
    severity = std::string(nameOf(report.severity));
    body = report.body ? std::optional(report.body->text) : std::nullopt;
    date = report.date;
}

std::optional<Report> StoredReport::report() const
{
    const auto gravity = NamedCases<Severity>::make(severity.get());
    if (!gravity)
        return {};
    auto report = Report{title.get(), place.get(), observer.get(), *gravity, std::nullopt, date.get()};
    if (const auto text = body.get())
        report.body = *text;
    return isFit(report) ? std::optional(std::move(report)) : std::nullopt;
}

} // namespace fieldbook
