#include "Orrenby/Platform/Coding/SnakeCase.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

namespace {

bool isUpper(char byte) { return byte >= 'A' && byte <= 'Z'; }
bool isLower(char byte) { return byte >= 'a' && byte <= 'z'; }
char lower(char byte) { return isUpper(byte) ? static_cast<char>(byte - 'A' + 'a') : byte; }
char upper(char byte) { return isLower(byte) ? static_cast<char>(byte - 'a' + 'A') : byte; }

} // namespace

std::string fromSnakeCase(std::string_view key)
{
    const auto first = key.find_first_not_of('_');
    if (first == std::string_view::npos)
        return std::string(key);
    const auto end = key.find_last_not_of('_') + 1;
    const auto words = key.substr(first, end - first);
    if (words.find('_') == std::string_view::npos)
        return std::string(key);

    std::string result(key.substr(0, first));
    bool isFirstWord = true;
    bool startsWord = false;
    for (const char byte : words) {
        if (byte == '_') {
            isFirstWord = false;
            startsWord = true;
        } else {
            result += startsWord && !isFirstWord ? upper(byte) : lower(byte);
            startsWord = false;
        }
    }
    return result + std::string(key.substr(end));
}

std::string toSnakeCase(std::string_view key)
{
    std::string result;
    for (std::size_t index = 0; index < key.size(); ++index) {
        const char byte = key[index];
        if (index > 0 && isUpper(byte)) {
            const char before = key[index - 1];
            const bool startsAfterAbbreviation = isUpper(before) && index + 1 < key.size()
                && isLower(key[index + 1]);
            if (before != '_' && (!isUpper(before) || startsAfterAbbreviation))
                result += '_';
        }
        result += lower(byte);
    }
    return result;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
