#include "Scenario/Arguments.hpp"

#include "Terminal/Text.hpp"

namespace fieldbook {

std::vector<std::string> wordsOf(std::string_view text)
{
    std::vector<std::string> words;
    while (!(text = trimmed(text)).empty()) {
        words.emplace_back(text.substr(0, text.find(' ')));
        text.remove_prefix(words.back().size());
    }
    return words;
}

std::vector<const char*> pointersTo(const std::vector<std::string>& words)
{
    std::vector<const char*> pointers;
    for (const auto& word : words)
        pointers.push_back(word.c_str());
    return pointers;
}

} // namespace fieldbook
