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
    if (fs::remove(reportsFolder / file, error))
        return {};
    return error ? file + ": " + error.message() : "there is no " + file;
}

StepProblem move(Stage&, const std::string& files)
{
    const auto words = wordsOf(files);
    if (words.size() != 2)
        return "it takes two names";
    std::error_code error;
    fs::rename(reportsFolder / words[0], reportsFolder / words[1], error);
    return error ? StepProblem(files + ": " + error.message()) : std::nullopt;
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
