#include "Orrenby/Platform/Coding/DecodingSession.hpp"

#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include <deque>

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

std::string_view nameOf(JSONKind kind)
{
    switch (kind) {
    case JSONKind::Null:
        return "null";
    case JSONKind::Bool:
        return "a boolean";
    case JSONKind::Number:
        return "a number";
    case JSONKind::Text:
        return "a text";
    case JSONKind::List:
        return "a list";
    case JSONKind::Object:
        return "an object";
    }
    return "something else";
}

} // namespace

/// What most calls do not need.
struct DecodingSession::Extras {
    std::deque<CodingStep> steps;
    std::vector<TextPosition> positions = {TextPosition()}; ///< At even distances, as far as counted.
};

DecodingSession::DecodingSession(std::span<const std::byte> data, const JSONDecodingOptions& options)
try : m_document(data), m_options(options) {
} catch (const JSONReadError& error) {
    throw DecodingError::dataCorrupted(
        {{}, "No valid JSON: " + error.description(), AnyError(error), error.position()});
}

DecodingSession::~DecodingSession() = default;

DecodingSession::Extras& DecodingSession::extras()
{
    if (!m_extras)
        m_extras = Owned<Extras>::make();
    return *m_extras;
}

TextPosition DecodingSession::position(JSONDocument::Node node)
{
    constexpr std::size_t distance = 4096;
    const auto source = m_document.source();
    const auto offset = m_document.offset(node);
    auto& positions = extras().positions;
    while (positions.size() <= offset / distance)
        positions.push_back(TextPosition::in(source, positions.size() * distance, positions.back()));
    return TextPosition::in(source, offset, positions[offset / distance]);
}

const CodingStep* DecodingSession::keep(const CodingStep& step) { return &extras().steps.emplace_back(step); }

DecodingError::Context DecodingPlace::context(std::string_view debugDescription) const
{
    DecodingError::Context context{codingPath(path), std::string(debugDescription), {}, {}};
    if (node != JSONDocument::absent)
        context.position = session->position(node);
    return context;
}

void DecodingPlace::throwMismatch(std::string_view typeName) const
{
    auto error = context("Expected " + std::string(typeName) + " but found " + std::string(nameOf(kind())));
    if (kind() == JSONKind::Null)
        throw DecodingError::valueNotFound(typeName, std::move(error));
    throw DecodingError::typeMismatch(typeName, std::move(error));
}

} // namespace orrenby::inline ORRENBY_ABI::detail
