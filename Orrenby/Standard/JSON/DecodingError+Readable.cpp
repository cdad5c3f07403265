#include "Orrenby/Standard/JSON/DecodingError+Readable.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

std::string readablePathOf(const DecodingError::Context& context)
{
    if (context.codingPath.empty())
        return "Empty coding path";
    auto result = "Coding Path: " + context.codingPath.front().stringValue();
    for (std::size_t index = 1; index < context.codingPath.size(); ++index) {
        const auto& key = context.codingPath[index];
        result += " > " + key.stringValue();
        if (key.intValue())
            result += " (" + describe(*key.intValue()) + ")";
    }
    return result;
}

std::string readableDescriptionOf(const DecodingError& error)
{
    return readableDescriptionAs(error.kind(), error);
}

std::string readableDescriptionAs(DecodingError::Kind kind, const DecodingError& error)
{
    const auto place = " " + readablePathOf(error.context()) + " - " + error.context().debugDescription;
    switch (kind) {
    case DecodingError::Kind::TypeMismatch:
        return "Type mismatch: " + error.typeName() + " -" + place;
    case DecodingError::Kind::ValueNotFound:
        return "Value not found: " + error.typeName() + " -" + place;
    case DecodingError::Kind::KeyNotFound:
        return "Key not found: " + describe(error.key()) + " -" + place;
    case DecodingError::Kind::DataCorrupted:
        return "Data corrupted:" + place;
    }
    return "Unknown decoding error"; // a kind that this version does not know
}

} // namespace orrenby::inline ORRENBY_ABI::detail
