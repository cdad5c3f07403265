#include "Orrenby/Utilities/ServiceDecoder/DecodingInspection.hpp"

#include "Orrenby/Utilities/ServiceDecoder/TextExcerpt.hpp"
#include <algorithm>
#include <exception>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

/// Whether the error is about the value at the place or about one inside of it, as far as paths tell.
bool isWithin(const std::vector<CodingKey>& path, const DecodingError::Context& context)
{
    return path.size() <= context.codingPath.size()
        && std::equal(path.begin(), path.end(), context.codingPath.begin());
}

} // namespace

void DecodingInspection::addThrown(const DecodingPlace& place)
{
    DecodingFailure failure{codingPath(place.path), {}, {}, AnyError(std::current_exception())};
    const auto* error = failure.error.cast<DecodingError>();
    // A type may decode a text of its own, whose paths and places are none of this document.
    if (error != nullptr && isWithin(failure.codingPath, error->context()) && error->context().position) {
        failure.codingPath = error->context().codingPath;
        failure.position = *error->context().position;
    } else
        failure.position = place.session->position(place.node);
    failure.excerpt = textExcerpt(place.document().source(), failure.position.offset);
    m_report.failures.push_back(std::move(failure));
}

void DecodingInspection::addMissing(const DecodingMembers& members, std::string_view key)
{
    try {
        members.throwKeyNotFound(key);
    } catch (...) {
        addThrown(members.place());
    }
}

} // namespace orrenby::inline ORRENBY_ABI::detail
