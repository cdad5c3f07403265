#include "Orrenby/Platform/Coding/EncodableCollections.hpp"

#include "Orrenby/Platform/Coding/CodingTexts.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

void encodeMapKey(std::string_view key, const EncodingPlace& object, bool isFirst)
{
    auto& text = object.text();
    if (!isFirst)
        text.append(',');
    if (!text.appendText(key)) {
        const CodingStep step{object.path, key, -1};
        object.inside(&step).throwInvalid(key, std::string(notUTF8));
    }
    text.append(':');
}

void encodeMapKey(std::int64_t key, const EncodingPlace& object, bool isFirst)
{
    auto& text = object.text();
    if (!isFirst)
        text.append(',');
    text.append('"');
    text.appendInteger(key);
    text.append("\":");
}

} // namespace orrenby::inline ORRENBY_ABI::detail
