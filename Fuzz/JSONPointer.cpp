// Paths into trees: the first line is the text of a pointer, the rest a document. No text is more than a
// pointer or an error, what a pointer prints gives it again, every way to look gives the same answer, and
// every value of the document is found by the pointer that its place makes.

#include "Orrenby/Standard/JSON/JSONPointer.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Orrenby/Standard/JSON/Dictionaries.hpp"

using namespace orrenby;
using Kind = JSONPointerError::Kind;

namespace {

void requireFound(const Any& root, const JSONPointer& pointer, const Any& value)
{
    requireThat(pointer.find(root) == value);
    requireThat(JSONPointer(pointer.description()) == pointer);
    if (const auto* dictionary = value.get<Dictionary>())
        for (const auto& [key, member] : *dictionary)
            requireFound(root, pointer.appending(key), member);
    if (const auto* list = value.get<Array>())
        for (std::size_t index = 0; index < list->size(); ++index)
            requireFound(root, pointer.appending(index), (*list)[index]);
}

/// One step, looked at afresh.
bool canStep(const Any& value, const std::string& token)
{
    if (const auto* dictionary = value.get<Dictionary>())
        return dictionary->contains(token);
    const auto* list = value.get<Array>();
    if (list == nullptr)
        return false;
    for (std::size_t index = 0; index < list->size(); ++index)
        if (std::to_string(index) == token)
            return true;
    return false;
}

void requireOneAnswer(const Any& root, const JSONPointer& pointer)
{
    const auto found = pointer.find(root);
    const auto outcome = pointer.tryGet<Any>(root);
    requireThat(outcome.value() == found);
    const auto optional = pointer.tryGetOptional<Any>(root);
    if (const auto error = outcome.error()) {
        requireThat(error->kind() != Kind::Malformed && error->kind() != Kind::TypeMismatch);
        requireThat(pointer.description().starts_with(error->pointer()));
        requireThat(!error->description().empty());
        requireThat(optional.isSuccess() == (error->kind() == Kind::NotFound));
    } else
        requireThat(optional.unwrap() == found);
    if (const auto parent = pointer.parent()) {
        const auto holder = parent->find(root);
        requireThat(found.has_value() == (holder && canStep(*holder, pointer.tokens().back())));
        requireThat(parent->appending(pointer.tokens().back()) == pointer);
    } else
        requireThat(found == root);
}

void requireSound(const JSONPointer& pointer, std::string_view document)
{
    const auto tree = tryMakeDictionary(std::as_bytes(std::span(document))).value();
    const auto root = Any(tree.value_or(Dictionary{{"a", Array{1, Dictionary{{"~", 2}, {"/", 3}}}}}));
    requireOneAnswer(root, pointer);
    // Linear in the size of each value's path, so that deep documents would take long.
    if (document.size() < 1000)
        requireFound(root, JSONPointer(), root);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto input = std::string(reinterpret_cast<const char*>(data), size);
    const auto text = std::string_view(input).substr(0, input.find('\n'));
    const auto document = std::string_view(input).substr(std::min(text.size() + 1, input.size()));

    const auto pointer = JSONPointer::make(text);
    const auto outcome = JSONPointer::tryMake(text);
    requireThat(outcome.value() == pointer);
    if (const auto error = outcome.error()) {
        requireThat(error->kind() == Kind::Malformed);
        requireThat(error->pointer() == text && error->offset() < text.size());
        return 0;
    }
    requireThat(pointer->description() == text);
    requireThat(JSONPointer::fromTokens(pointer->tokens()) == *pointer);
    requireSound(*pointer, document);
    return 0;
}
