#include "Orrenby/Platform/Coding/EncodingSession.hpp"

#include "Orrenby/Platform/Coding/CodingTexts.hpp"
#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Orrenby/Platform/Coding/JSONTextWriter.hpp"
#include "Orrenby/Platform/Coding/SnakeCase.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

void appendKey(const EncodingPlace& object, std::string_view key)
{
    if (!object.text().appendText(key)) {
        const CodingStep step{object.path, key, -1};
        object.inside(&step).throwInvalid(key, std::string(notUTF8));
    }
}

std::string convertedKey(const EncodingPlace& object, std::string_view key)
{
    const auto* custom = object.session->options().keys.customCoding();
    if (custom == nullptr)
        return toSnakeCase(key);
    auto path = codingPath(object.path);
    path.emplace_back(key);
    return (*custom)(path).stringValue();
}

/// Recursive, which the limit of nesting allows.
void assemble(const EncodingText& source, JSONTextBuffer& result)
{
    const auto text = source.text.view();
    std::size_t done = 0;
    for (const auto& [place, inserted] : source.insertions) {
        result.append(text.substr(done, place - done));
        assemble(*inserted, result);
        done = place;
    }
    result.append(text.substr(done));
}

} // namespace

void EncodingPlace::throwInvalid(Any value, std::string message) const
{
    throw EncodingError::invalidValue(std::move(value), {codingPath(path), std::move(message), {}});
}

void EncodingPlace::throwTooDeep() const { throwInvalid({}, std::string(nestedTooDeep)); }

struct EncodingSession::Detached {
    EncodingText text;
    EncodingSlot slot;

    explicit Detached(const EncodingPlace& place)
        : slot({place.session, &text, place.path, place.depth})
    {}
};

struct EncodingSession::KeptStep {
    std::string key;
    CodingStep step;
};

EncodingSession::EncodingSession(const JSONEncodingOptions& options)
    : m_options(options)
{}

EncodingSession::~EncodingSession() = default;

EncodingSlot& EncodingSession::detach(const EncodingPlace& place)
{
    m_detached.push_back(std::make_unique<Detached>(place));
    auto& detached = *m_detached.back();
    place.target->insertions.emplace_back(place.text().size(), &detached.text);
    return detached.slot;
}

const CodingStep* EncodingSession::keep(const CodingStep& step)
{
    m_steps.push_back(std::make_unique<KeptStep>(KeptStep{std::string(step.key), step}));
    auto& kept = *m_steps.back();
    kept.step.key = kept.key;
    return &kept.step;
}

const JSONTextBuffer& EncodingSession::finished()
{
    for (const auto& detached : m_detached)
        detached->slot.close();
    const bool isComplete = m_detached.empty();
    const bool isInForm = m_options.output == JSONOutput{} && !m_mayRepeatKeys;
    if (isComplete && isInForm)
        return m_text.text;

    JSONTextBuffer assembled;
    assemble(m_text, isInForm ? m_finished : assembled);
    // Reading it again leaves the last of repeated members.
    if (!isInForm)
        writeJSON(JSONDocument(assembled.view()), m_options.output, m_finished);
    return m_finished;
}

void writeKey(const EncodingPlace& object, bool isFirst, std::string_view key)
{
    if (!isFirst)
        object.text().append(',');
    if (object.session->keepsKeys())
        appendKey(object, key);
    else {
        // Different keys may become one.
        object.session->noteRepeatedKey();
        appendKey(object, convertedKey(object, key));
    }
    object.text().append(':');
}

} // namespace orrenby::inline ORRENBY_ABI::detail
