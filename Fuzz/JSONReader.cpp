// Reading JSON: no bytes are more than a document or an error, what was read is written and read back equal,
// and the verdict is that of the peer's own strict parser.

#include "Fuzz/Support/RequireThat.hpp"
#include "Fuzz/Support/WellFormed.hpp"
#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Coding/JSONDocument.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Coding/NSJSONSerialization.hpp"
#include <boost/json/stream_parser.hpp>
#include <optional>
#include <set>
#include <span>

using namespace orrenby;
using Reading = NSJSONSerialization::ReadingOptions;
using Writing = NSJSONSerialization::WritingOptions;

namespace {

bool peerAccepts(std::string_view text)
{
    boost::json::parse_options options;
    options.max_depth = 512;
    boost::json::stream_parser parser({}, options);
    boost::json::error_code code;
    parser.write(text.data(), text.size(), code);
    if (!code)
        parser.finish(code);
    return !code;
}

/// Each value lies inside the one that holds it, the keys of an object differ, and every text is valid.
void requireSound(const JSONDocument& document, JSONDocument::Node holder)
{
    std::set<std::string> keys;
    const auto isObject = document.kind(holder) == JSONKind::Object;
    for (auto node = JSONDocument::firstIn(holder); node < document.endOf(holder);
         node = document.next(node)) {
        requireThat(document.offset(node) < document.source().size());
        requireThat(document.next(node) <= document.endOf(holder));
        if (isObject) {
            requireThat(keys.insert(std::string(document.key(node))).second);
            requireThat(isWellFormed(document.key(node)));
            requireThat(document.find(holder, document.key(node)) == node);
        }
        if (document.kind(node) == JSONKind::Text)
            requireThat(isWellFormed(document.text(node)));
        if (document.kind(node) >= JSONKind::List)
            requireSound(document, node);
    }
}

void requireRoundTrip(std::span<const std::byte> bytes)
{
    const auto read = NSJSONSerialization::tryJSONObjectWithData(bytes, Reading::FragmentsAllowed);
    if (const auto error = read.error()) {
        // The grammar is right, so only a number can be too large.
        requireThat(error->cast<DecodingError>() != nullptr);
        return;
    }
    const auto value = *read.value();
    for (const auto form : {Writing::FragmentsAllowed, Writing::FragmentsAllowed | Writing::PrettyPrinted,
             Writing::FragmentsAllowed | Writing::SortedKeys}) {
        const auto written = NSJSONSerialization::dataWithJSONObject(value, form);
        requireThat(NSJSONSerialization::JSONObjectWithData(written, Reading::FragmentsAllowed) == value);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Exactly as many bytes as there are, so that reading beyond them is noticed.
    const auto bytes = std::vector<std::byte>(
        reinterpret_cast<const std::byte*>(data), reinterpret_cast<const std::byte*>(data) + size);
    std::optional<JSONDocument> document;
    try {
        document.emplace(std::span<const std::byte>(bytes));
    } catch (const JSONReadError& error) {
        requireThat(error.position().line >= 1 && error.position().column >= 1);
    }
    const auto text = std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto isUTF8WithoutMark = text.find('\0') == std::string_view::npos
        && !text.starts_with("\xEF\xBB\xBF") && !text.starts_with("\xFF\xFE")
        && !text.starts_with("\xFE\xFF");
    if (isUTF8WithoutMark)
        requireThat(document.has_value() == peerAccepts(text));
    if (document.has_value()) {
        if (document->kind(JSONDocument::root) >= JSONKind::List)
            requireSound(*document, JSONDocument::root);
        requireRoundTrip(bytes);
    }
    return 0;
}
