#include "Orrenby/Platform/Text/DataDetector.hpp"

#include "Orrenby/Platform/Text/DataDetectorAddresses.hpp"
#include "Orrenby/Platform/Text/DataDetectorLinks.hpp"
#include "Orrenby/Platform/Text/DataDetectorPhones.hpp"
#include "Orrenby/Platform/Text/UTF16.hpp"
#include <algorithm>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

using detail::DetectorSpan;

/// What one of the scanners found.
struct Found {
    DataKind kind = DataKind::None;
    DetectorSpan span{};
    std::string_view prefix{};
};

/// Whether the first stands when the two overlap.
bool isBefore(const Found& one, const Found& other)
{
    return one.span.begin != other.span.begin ? one.span.begin < other.span.begin
                                              : one.span.end > other.span.end;
}

} // namespace

struct DataDetector::Scan::State {
    State(DataKind wanted, std::string_view searched)
        : kinds(wanted)
        , view(searched)
        , text(searched)
        , links(text, detail::DetectorRules::shared())
        , phones(text, detail::DetectorRules::shared())
        , addresses(text, detail::DetectorRules::shared())
        , ahead{nextLink(), nextPhone(), nextAddress()}
    {}

    std::optional<Found> nextLink()
    {
        const auto link = links.next();
        return link ? std::optional(Found{DataKind::Link, link->span, link->prefix}) : std::nullopt;
    }
    std::optional<Found> nextPhone()
    {
        const auto span = phones.next();
        return span ? std::optional(Found{DataKind::PhoneNumber, *span}) : std::nullopt;
    }
    std::optional<Found> nextAddress()
    {
        const auto span = addresses.next();
        return span ? std::optional(Found{DataKind::Address, *span}) : std::nullopt;
    }
    void advance(std::size_t scanner)
    {
        ahead[scanner] = scanner == 0 ? nextLink() : scanner == 1 ? nextPhone() : nextAddress();
    }

    /// The next one of all kinds that overlaps none before it.
    std::optional<Found> next()
    {
        for (std::size_t scanner = 0; scanner < std::size(ahead); ++scanner)
            while (ahead[scanner] && ahead[scanner]->span.begin < takenUntil)
                advance(scanner);
        std::size_t first = 0;
        for (std::size_t scanner = 1; scanner < std::size(ahead); ++scanner)
            if (ahead[scanner] && (!ahead[first] || isBefore(*ahead[scanner], *ahead[first])))
                first = scanner;
        const auto found = ahead[first];
        if (found) {
            takenUntil = found->span.end;
            advance(first);
        }
        return found;
    }

    DataMatch match(const Found& found)
    {
        const auto unitsBefore = utf16Length(view.substr(countedBytes, found.span.begin - countedBytes));
        const auto piece = text.slice(found.span);
        DataMatch result{.kind = found.kind,
            .range = {.location = countedUnits + unitsBefore, .length = utf16Length(piece)},
            .byteOffset = found.span.begin,
            .byteCount = piece.size()};
        if (found.kind == DataKind::Link)
            result.url = detail::linkURL(found.prefix, piece);
        countedBytes = found.span.end;
        countedUnits = result.range.upperBound();
        return result;
    }

    DataKind kinds;
    std::string_view view;
    detail::DetectorText text;
    detail::LinkScanner links;
    detail::PhoneScanner phones;
    detail::AddressScanner addresses;
    /// What each scanner found next.
    std::optional<Found> ahead[3];
    std::size_t takenUntil = 0;
    /// The place up to which units were counted.
    std::size_t countedBytes = 0;
    std::size_t countedUnits = 0;
};

DataDetector::Scan::Scan(const DataDetector& detector, std::string_view text)
    : m_state(detail::Owned<State>::make(detector.kinds(), text))
{}

DataDetector::Scan::Scan(Scan&&) noexcept = default;
DataDetector::Scan& DataDetector::Scan::operator=(Scan&&) noexcept = default;
DataDetector::Scan::~Scan() = default;

std::optional<DataMatch> DataDetector::Scan::next()
{
    while (const auto found = m_state->next())
        if (hasKind(m_state->kinds, found->kind))
            return m_state->match(*found);
    return std::nullopt;
}

std::size_t DataDetector::Scan::work() const noexcept { return m_state->text.reads(); }

std::vector<DataMatch> DataDetector::matches(std::string_view text) const
{
    std::vector<DataMatch> result;
    Scan scan(*this, text);
    while (auto match = scan.next())
        result.push_back(std::move(*match));
    return result;
}

std::optional<DataMatch> DataDetector::firstMatch(std::string_view text) const
{
    return Scan(*this, text).next();
}

} // namespace orrenby
