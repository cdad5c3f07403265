#include "Orrenby/Platform/Objects/TypeName.hpp"

#include <cstdlib>
#include <cxxabi.h>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

std::string demangled(const std::type_info& type)
{
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> text(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
    return status == 0 ? text.get() : type.name();
}

std::string_view trimmed(std::string_view text)
{
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

/// Walks a demangled name and tells at which places it is not inside any kind of bracket.
class OuterLevel {
public:
    /// Whether `character` stands on the outermost level; brackets themselves do not.
    bool sees(char character)
    {
        if (character == '<' || character == '(' || character == '{' || character == '[') {
            ++m_depth;
            return false;
        }
        if (character == '>' || character == ')' || character == '}' || character == ']') {
            --m_depth;
            return false;
        }
        return m_depth == 0;
    }

private:
    int m_depth = 0;
};

std::vector<std::string_view> splitAtCommas(std::string_view text)
{
    std::vector<std::string_view> parts;
    OuterLevel level;
    std::size_t start = 0;
    for (std::size_t index = 0; index < text.size(); ++index)
        if (level.sees(text[index]) && text[index] == ',') {
            parts.push_back(trimmed(text.substr(start, index - start)));
            start = index + 1;
        }
    if (!trimmed(text).empty())
        parts.push_back(trimmed(text.substr(start)));
    return parts;
}

std::string_view withoutScopes(std::string_view text)
{
    OuterLevel level;
    std::size_t start = 0;
    for (std::size_t index = 0; index + 1 < text.size(); ++index)
        if (level.sees(text[index]) && text[index] == ':' && text[index + 1] == ':')
            start = index + 2;
    return text.substr(start);
}

std::string fundamentalName(std::string_view text)
{
    constexpr std::pair<std::string_view, std::string_view> names[] = {{"bool", "Bool"}, {"float", "Float"},
        {"double", "Double"}, {"long", "Int"}, {"long long", "Int"}, {"int", "Int32"}, {"short", "Int16"},
        {"signed char", "Int8"}, {"unsigned long", "UInt64"}, {"unsigned long long", "UInt64"},
        {"unsigned int", "UInt32"}, {"unsigned short", "UInt16"}, {"unsigned char", "UInt8"},
        {"char", "Character"}, {"void", "Void"}, {"char const*", "String"}};
    for (const auto& [spelling, name] : names)
        if (spelling == text)
            return std::string(name);
    return {};
}

std::string printed(std::string_view text);

/// What the standard library's templates, handles and closing classes print as; empty for all others.
std::string knownTemplateName(
    std::string_view scoped, std::string_view name, const std::vector<std::string_view>& arguments)
{
    if (arguments.empty())
        return {};
    if (scoped.starts_with("orrenby::") && name == "Object")
        return printed(arguments[0]);
    if (!scoped.starts_with("std::"))
        return {};
    if (name == "basic_string" || name == "basic_string_view")
        return "String";
    if (name == "vector")
        return arguments[0] == "std::byte" ? "Data" : "Array<" + printed(arguments[0]) + ">";
    if (name == "optional")
        return "Optional<" + printed(arguments[0]) + ">";
    if (name == "set" || name == "unordered_set")
        return "Set<" + printed(arguments[0]) + ">";
    if ((name == "map" || name == "unordered_map") && arguments.size() > 1)
        return "Dictionary<" + printed(arguments[0]) + ", " + printed(arguments[1]) + ">";
    if (name == "shared_ptr" || name == "weak_ptr" || name == "unique_ptr")
        return printed(arguments[0]);
    return {};
}

/// Where the template arguments of an unscoped name begin, or `npos`.
std::size_t argumentsStart(std::string_view name)
{
    return name.ends_with('>') && !name.starts_with('(') && !name.starts_with('{') ? name.find('<')
                                                                                   : std::string_view::npos;
}

std::string printed(std::string_view text)
{
    text = trimmed(text);
    if (auto name = fundamentalName(text); !name.empty())
        return name;
    for (const auto suffix : {std::string_view(" const"), std::string_view("&")})
        if (text.ends_with(suffix))
            return printed(text.substr(0, text.size() - suffix.size()));
    if (text.ends_with('*'))
        return printed(text.substr(0, text.size() - 1)) + "*";

    auto unscoped = withoutScopes(text);
    if (const auto tag = unscoped.rfind("[abi:"); tag != std::string_view::npos && unscoped.ends_with(']'))
        unscoped = unscoped.substr(0, tag);
    const auto start = argumentsStart(unscoped);
    if (start == std::string_view::npos)
        return std::string(unscoped);

    const auto name = unscoped.substr(0, unscoped.find('['));
    const auto plainName = name.substr(0, start);
    const auto arguments = splitAtCommas(unscoped.substr(start + 1, unscoped.size() - start - 2));
    if (auto known = knownTemplateName(text, plainName, arguments); !known.empty())
        return known;
    std::string result(plainName);
    result += '<';
    for (std::size_t index = 0; index < arguments.size(); ++index)
        result += (index == 0 ? "" : ", ") + printed(arguments[index]);
    return result + '>';
}

} // namespace

std::string typeName(const std::type_info& type) { return printed(demangled(type)); }

namespace detail {

std::string integerTypeName(std::size_t width, bool isSigned)
{
    if (isSigned && width == 8)
        return "Int";
    return (isSigned ? "Int" : "UInt") + std::to_string(width * 8);
}

std::string templateName(const std::type_info& type)
{
    const auto text = demangled(type);
    const auto unscoped = withoutScopes(text);
    return std::string(unscoped.substr(0, unscoped.find_first_of("<[")));
}

std::string dynamicTypeName(const std::type_info& seenAs, const std::type_info& actual, std::string own)
{
    if (seenAs == actual)
        return own;
    auto name = orrenby::typeName(actual);
    // The closing Object<T> prints as T: then the name that T declares for itself is the right one.
    return name == orrenby::typeName(seenAs) ? own : name;
}

} // namespace detail

} // namespace orrenby
