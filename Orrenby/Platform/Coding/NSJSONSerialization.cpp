#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"

#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Orrenby/Platform/Coding/JSONAny.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Coding/JSONTextWriter.hpp"

namespace orrenby::inline ORRENBY_ABI {

namespace {

template <class Options> bool has(Options options, Options option)
{
    return (static_cast<unsigned>(options) & static_cast<unsigned>(option)) != 0;
}

bool isContainer(const Any& value)
{
    return value.kind() == Any::Kind::List || value.kind() == Any::Kind::Dictionary;
}

Data dataFrom(const detail::JSONTextBuffer& text) { return dataFromText(text.view()); }

/// The outcome of an operation that throws.
template <class Operation> auto outcomeOf(Operation operation)
{
    using Outcome = Result<decltype(operation()), AnyError>;
    try {
        return Outcome::success(operation());
    } catch (...) {
        return Outcome::failure(AnyError(std::current_exception()));
    }
}

} // namespace

Any NSJSONSerialization::JSONObjectWithData(std::span<const std::byte> data, ReadingOptions options)
{
    const JSONDocument document(data);
    const bool isFragment = document.kind(JSONDocument::root) < JSONKind::List;
    if (isFragment && !has(options, ReadingOptions::FragmentsAllowed))
        throw JSONReadError(JSONReadError::Kind::Fragment, document.position(JSONDocument::root));
    return detail::anyFromJSON(document, JSONDocument::root);
}

Result<Any, AnyError> NSJSONSerialization::tryJSONObjectWithData(
    std::span<const std::byte> data, ReadingOptions options)
{
    return outcomeOf([&] { return JSONObjectWithData(data, options); });
}

Data NSJSONSerialization::dataWithJSONObject(const Any& value, WritingOptions options)
{
    if (!isContainer(value) && !has(options, WritingOptions::FragmentsAllowed))
        throw EncodingError::invalidValue(value, {{}, "Neither a list nor a dictionary", {}});
    detail::JSONTextBuffer compact;
    detail::writeAnyAsJSON(value, compact);
    const JSONOutput output{.prettyPrinted = has(options, WritingOptions::PrettyPrinted),
        .sortedKeys = has(options, WritingOptions::SortedKeys)};
    if (output == JSONOutput{})
        return dataFrom(compact);
    detail::JSONTextBuffer text;
    detail::writeJSON(JSONDocument(compact.view()), output, text);
    return dataFrom(text);
}

Result<Data, AnyError> NSJSONSerialization::tryDataWithJSONObject(const Any& value, WritingOptions options)
{
    return outcomeOf([&] { return dataWithJSONObject(value, options); });
}

bool NSJSONSerialization::isValidJSONObject(const Any& value)
{
    if (!isContainer(value))
        return false;
    detail::JSONTextBuffer text;
    try {
        detail::writeAnyAsJSON(value, text);
        return true;
    } catch (const EncodingError&) {
        return false;
    }
}

} // namespace orrenby
