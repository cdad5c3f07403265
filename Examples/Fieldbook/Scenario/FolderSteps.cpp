#include "Scenario/Steps.hpp"

#include "Folder/WholeFile.hpp"
#include "Scenario/Arguments.hpp"
#include "Scenario/WorkingFolder.hpp"
#include "Terminal/Text.hpp"
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace fieldbook::steps {

namespace fs = std::filesystem;

namespace {

/// Bytes of all kinds, with lines that begin as delimiters do.
std::string photoBytes(std::size_t size)
{
    std::string bytes = "\x89PNG\r\n--";
    unsigned state = 1;
    while (bytes.size() < size)
        bytes += static_cast<char>((state = state * 1664525U + 1013904223U) >> 24U);
    bytes.resize(size);
    return bytes;
}

} // namespace

StepProblem write(Stage&, const std::string& fileAndText)
{
    const auto end = std::min(fileAndText.find(' '), fileAndText.size());
    return writeWhole(reportsFolder / fileAndText.substr(0, end), trimmed(fileAndText.substr(end)));
}

StepProblem remove(Stage&, const std::string& file)
{
    std::error_code error;
    return fs::remove(reportsFolder / file, error) ? StepProblem() : "there is no " + file;
}

StepProblem move(Stage&, const std::string& files)
{
    const auto words = wordsOf(files);
    std::error_code error;
    if (words.size() == 2)
        fs::rename(reportsFolder / words[0], reportsFolder / words[1], error);
    return words.size() == 2 && !error ? StepProblem() : "it takes two names";
}

StepProblem photo(Stage&, const std::string& fileAndSize)
{
    const auto words = wordsOf(fileAndSize);
    const auto size = words.size() == 2 ? numberIn(words[1]) : std::nullopt;
    if (!size)
        return "it takes a name and a number of bytes";
    return writeWhole(reportsFolder / words[0], photoBytes(static_cast<std::size_t>(*size)));
}

} // namespace fieldbook::steps
