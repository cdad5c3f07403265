#include "Orrenby/Standard/JSON/JSONPointerError.hpp"

#include <utility>

namespace orrenby::inline ORRENBY_ABI {

JSONPointerError::JSONPointerError(Content content)
    : m_content(std::make_shared<const Content>(std::move(content)))
{}

std::string JSONPointerError::description() const
{
    const auto rest = (pointer().empty() ? "the root" : pointer()) + ": " + m_content->reason;
    switch (kind()) {
    case Kind::Malformed:
        return "Malformed JSON pointer " + rest;
    case Kind::TypeMismatch:
        return "Type mismatch at " + rest;
    case Kind::NotFound:
    case Kind::InvalidIndex:
    case Kind::NotAContainer:
        break;
    }
    return "Nothing at " + rest;
}

} // namespace orrenby
