#include "Upload/ReportOutbox.hpp"

#include "Orrenby/Foundation/Outbox/Outbox+Observe.hpp"
#include "Orrenby/Foundation/Outbox/OutboxError.hpp"
#include "Orrenby/Foundation/URLRequest+Builder.hpp"
#include "Orrenby/Platform/Net/BodyStreamError.hpp"
#include "Report/ReportEncoding.hpp"
#include "Terminal/Text.hpp"
#include "Upload/ReportRequests.hpp"
#include <filesystem>
#include <set>
#include <utility>

namespace fieldbook {

namespace {

using orrenby::OutboxState;

/// Stands for the service of the program's own, which listens elsewhere in each run. Nobody can have a host
/// of this name.
constexpr auto ownService = "http://own-service.invalid";

constexpr auto senderField = "From";
constexpr std::string_view keyPrefix = "report/";

std::string keyOf(int number) { return std::string(keyPrefix) + std::to_string(number); }

/// The report in an entry; nothing for what this program has not put in.
std::optional<QueuedReport> reportIn(const orrenby::Ref<orrenby::OutboxEntry>& entry)
{
    const auto key = entry->key().value_or("");
    if (!key.starts_with(keyPrefix))
        return {};
    const auto number = numberIn(std::string_view(key).substr(keyPrefix.size()));
    const auto sender = orrenby::EmailAddress::make(
        {.stringValue = entry->request().httpHeader(senderField).value_or("")});
    const auto service = orrenby::URL::make("/", entry->url());
    if (!number || !sender || !service)
        return {};
    const bool isOwn = service->absoluteString() == ownService + std::string("/");
    return QueuedReport{*number, *sender, isOwn ? std::nullopt : service, entry};
}

} // namespace

ReportOutbox::ReportOutbox(std::shared_ptr<Memory> memory)
    : m_memory(std::move(memory))
    , m_outbox(m_memory->context())
{
    m_outbox.recover();
}

PutReports ReportOutbox::put(const Shipment& shipment)
{
    removeRefused(shipment);
    PutReports result;
    m_memory->commit([&] {
        for (const auto& report : shipment.reports) {
            try {
                result.queued.push_back(putOne(report, shipment));
            } catch (const orrenby::BodyStreamError& error) {
                result.problems.emplace(report.number, error.description());
            } catch (const orrenby::OutboxError& error) {
                result.problems.emplace(report.number, error.message());
            }
        }
    });
    return result;
}

void ReportOutbox::removeRefused(const Shipment& shipment)
{
    std::set<std::string> keys;
    for (const auto& report : shipment.reports)
        keys.insert(keyOf(report.number));
    for (const auto& entry : m_outbox.entries(OutboxState::GivenUp))
        if (keys.contains(entry->key().value_or("")))
            m_outbox.remove(entry);
}

QueuedReport ReportOutbox::putOne(const OutgoingReport& report, const Shipment& shipment)
{
    auto options = orrenby::OutboxOptions{.key = keyOf(report.number), .addsIdempotencyKey = true};
    options.parts.push_back({.key = "report",
        .contentType = std::string(orrenby::HTTPMediaType::json),
        .data = orrenby::dataFromText(encodedReport(report.report))});
    if (report.photo)
        options.parts.push_back({.key = "photo",
            .contentType = report.photo->mediaType,
            .path = std::filesystem::absolute(report.photo->file).string()});
    const auto service = shipment.service.value_or(orrenby::URL::make(ownService).value());
    const auto request = requestTo(service, "/reports/" + std::to_string(report.number))
        | orrenby::using_(orrenby::HTTPMethod::put)
        | orrenby::addingHeader(senderField, shipment.sender.stringValue());
    auto entry = m_outbox.add(request, options).entry;
    m_memory->put(report.file, report.number, report.report);
    m_memory->mark(report.number, Sending::asked);
    return {report.number, shipment.sender, shipment.service, std::move(entry)};
}

std::vector<QueuedReport> ReportOutbox::waiting() const
{
    std::vector<QueuedReport> result;
    for (const auto& entry : m_outbox.entries(OutboxState::Pending))
        if (auto report = reportIn(entry))
            result.push_back(*std::move(report));
    return result;
}

orrenby::Streams::AnyPublisher<std::size_t, orrenby::StoreError> ReportOutbox::waitingCount() const
{
    return orrenby::observeCounts(m_outbox).map(
        [](const orrenby::OutboxCounts& counts) { return counts.pending + counts.sending; });
}

SignedRequest ReportOutbox::request(
    const orrenby::OutboxEntry& entry, const orrenby::URL& service, std::string_view token)
{
    auto request = entry.request();
    request.setURL(orrenby::URL::make(std::string(request.url().path()), service).value());
    return {std::move(request) | orrenby::signed_(token), entry.body()};
}

std::optional<int> ReportOutbox::begin(const QueuedReport& report)
{
    if (!m_outbox.begin(report.entry))
        return {};
    return static_cast<int>(report.entry->attempts());
}

void ReportOutbox::wait(const QueuedReport& report, orrenby::Date notBefore, std::string_view reason)
{
    m_outbox.retry(report.entry, notBefore, reason);
}

void ReportOutbox::refuse(const QueuedReport& report, std::string_view reason)
{
    m_memory->mark(report.number, Sending::notAsked);
    m_outbox.giveUp(report.entry, reason);
}

void ReportOutbox::finish(const QueuedReport& report)
{
    m_memory->mark(report.number, Sending::done);
    m_outbox.finish(report.entry);
}

} // namespace fieldbook
