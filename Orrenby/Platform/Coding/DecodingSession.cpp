#include "Orrenby/Platform/Coding/DecodingSession.hpp"

#include "Orrenby/Platform/Coding/JSONReadError.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

std::unique_ptr<const JSONDocument> documentOf(std::span<const std::byte> data)
{
    try {
        return std::make_unique<const JSONDocument>(data);
    } catch (const JSONReadError& error) {
        throw DecodingError::dataCorrupted(
            {{}, "No valid JSON: " + error.description(), AnyError(error), error.position()});
    }
}

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

DecodingSession::DecodingSession(std::span<const std::byte> data, const JSONDecodingOptions& options)
    : m_document(documentOf(data))
    , m_options(options)
{}

DecodingSession::~DecodingSession() = default;

TextPosition DecodingSession::position(JSONDocument::Node node)
{
    constexpr std::size_t distance = 4096;
    const auto source = m_document->source();
    const auto offset = m_document->offset(node);
    if (m_positions.empty())
        m_positions.emplace_back();
    while (m_positions.size() <= offset / distance)
        m_positions.push_back(TextPosition::in(source, m_positions.size() * distance, m_positions.back()));
    return TextPosition::in(source, offset, m_positions[offset / distance]);
}

const CodingStep* DecodingSession::keep(const CodingStep& step)
{
    m_steps.push_back(std::make_unique<const CodingStep>(step));
    return m_steps.back().get();
}

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
