#pragma once

/// @file
/// The texts of Tests/Platform/Text/Corpus, whose form stands at the head of its Links.txt.

#include "Orrenby/Platform/Text/DataDetector.hpp"
#include "Orrenby/Platform/Text/EmbeddedText.hpp"
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The files of the corpus.
std::span<const EmbeddedText> detectorCorpusTexts();

} // namespace orrenby::inline ORRENBY_ABI::detail

namespace orrenby::testing {

/// What is in a text, or what the detector says is in it.
struct CorpusFinding {
    enum class Mark { Right, Missed, Wrong };
    Mark mark = Mark::Right;
    /// "link", "mail", "phone" or "address".
    std::string kind;
    std::string text;
    /// Empty for kinds without one.
    std::string url;

    /// As it stands in the corpus.
    std::string description() const
    {
        const auto plain = kind == "link" || kind == "mail" ? text + "=>" + url : text;
        return kind + ":" + plain;
    }
};

struct CorpusLine {
    std::string file;
    int number = 0;
    std::string text;
    std::vector<CorpusFinding> findings;
};

/// Puts line breaks, tabs and backslashes where "\n", "\t" and "\\" stand.
inline std::string unescaped(std::string_view text)
{
    std::string result;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text[place] != '\\' || place + 1 == text.size()) {
            result += text[place];
            continue;
        }
        const char sign = text[++place];
        result += sign == 'n' ? '\n' : sign == 't' ? '\t' : sign;
    }
    return result;
}

inline CorpusFinding corpusFinding(std::string_view column)
{
    CorpusFinding finding;
    if (column.starts_with('!') || column.starts_with('?')) {
        finding.mark = column.front() == '!' ? CorpusFinding::Mark::Missed : CorpusFinding::Mark::Wrong;
        column.remove_prefix(1);
    }
    const auto colon = column.find(':');
    finding.kind = column.substr(0, colon);
    column.remove_prefix(colon + 1);
    const auto arrow = column.rfind("=>");
    finding.text = unescaped(column.substr(0, arrow));
    if (arrow != std::string_view::npos)
        finding.url = column.substr(arrow + 2);
    else if (finding.kind == "mail")
        finding.url = finding.text.starts_with("mailto:") ? finding.text : "mailto:" + finding.text;
    else if (finding.kind == "link") {
        // A scheme, or a port as in "example.com:8080".
        const auto end = finding.text.find(':');
        const bool hasScheme = end != std::string::npos && finding.text.find('.') > end;
        const bool isLink = hasScheme || finding.text.find("://") < finding.text.find('/');
        finding.url = (isLink ? "" : "http://") + finding.text;
    }
    return finding;
}

/// All lines of all files.
inline std::vector<CorpusLine> detectorCorpus()
{
    std::vector<CorpusLine> lines;
    for (const auto& [name, text] : detail::detectorCorpusTexts()) {
        auto rest = text;
        for (int number = 1; !rest.empty(); ++number) {
            auto line = rest.substr(0, rest.find('\n'));
            rest.remove_prefix(std::min(line.size() + 1, rest.size()));
            if (line.empty() || line == "#" || line.starts_with("# "))
                continue;
            CorpusLine result{
                std::string(name) + ".txt", number, unescaped(line.substr(0, line.find('\t'))), {}};
            while (line.find('\t') != std::string_view::npos) {
                line.remove_prefix(line.find('\t') + 1);
                result.findings.push_back(corpusFinding(line.substr(0, line.find('\t'))));
            }
            lines.push_back(std::move(result));
        }
    }
    return lines;
}

/// What the detector finds in a text.
inline std::vector<CorpusFinding> detectorFindings(std::string_view text)
{
    std::vector<CorpusFinding> result;
    for (const auto& match : DataDetector(DataKind::All).matches(text)) {
        const auto kind = match.kind == DataKind::Address ? "address"
            : match.kind == DataKind::PhoneNumber         ? "phone"
            : match.scheme() == "mailto"                  ? "mail"
                                                          : "link";
        result.push_back({CorpusFinding::Mark::Right, kind, std::string(match.in(text)),
            match.url ? match.url->absoluteString() : ""});
    }
    return result;
}

} // namespace orrenby::testing
