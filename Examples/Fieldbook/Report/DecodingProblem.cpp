#include "Report/DecodingProblem.hpp"

#include "Terminal/Text.hpp"

namespace fieldbook {

std::string explain(const orrenby::DecodingError& error)
{
    const auto& context = error.context();
    // Of a text that is no JSON the message says where already.
    if (context.underlyingError)
        return printable(context.debugDescription);
    std::string place;
    for (const auto& key : context.codingPath)
        place += (place.empty() ? "" : " > ") + key.stringValue();
    if (context.position)
        place += (place.empty() ? "" : ", ") + context.position->description();
    // The message may quote the text.
    return printable(place + ": " + context.debugDescription);
}

} // namespace fieldbook
