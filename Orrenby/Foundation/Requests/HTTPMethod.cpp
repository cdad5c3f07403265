#include "Orrenby/Foundation/Requests/HTTPMethod.hpp"

#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <array>

namespace orrenby::inline ORRENBY_ABI {

namespace {

struct Texts {
    std::string_view raw;
    std::string_view sent;
};

constexpr std::array<Texts, 6> texts = {{
    {"get", "GET"},
    {"post", "POST"},
    {"put", "PUT"},
    {"delete", "DELETE"},
    {"patch", "PATCH"},
    {"head", "HEAD"},
}};

const Texts& textsOf(HTTPMethod::Case method)
{
    const auto index = static_cast<std::size_t>(method);
    if (index >= texts.size()) // C++ lets a variable hold a value that is none of the cases
        fatalError("Value is none of the methods", "Foundation/HTTPMethod");
    return texts[index];
}

} // namespace

std::optional<HTTPMethod> HTTPMethod::make(std::string_view rawValue) noexcept
{
    for (const HTTPMethod method : allCases<HTTPMethod>)
        if (textsOf(method).raw == rawValue)
            return method;
    return std::nullopt;
}

std::string HTTPMethod::rawValue() const { return std::string(textsOf(m_case).raw); }

std::string HTTPMethod::httpText() const { return std::string(textsOf(m_case).sent); }

} // namespace orrenby
