#include "Scenario/Progress.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace fieldbook {

namespace {

constexpr std::size_t nameWidth = 14;

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string aligned(const std::string& text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string rounded(double seconds, int digits)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f", digits, seconds);
    return text.data();
}

} // namespace

Progress::Progress(Terminal& terminal, std::size_t sceneCount)
    : m_terminal(terminal)
    , m_sceneCount(sceneCount)
{}

void Progress::begin(const Scene& scene)
{
    const auto place = aligned(std::to_string(m_rows.size() + 1), 2) + '/' + std::to_string(m_sceneCount);
    m_terminal.print(m_terminal.styled(Style::faint, place) + "  "
        + m_terminal.styled(Style::bold, padded(scene.name, nameWidth)) + scene.title);
}

void Progress::end(const Scene& scene, double seconds)
{
    m_rows.push_back({scene.name, scene.steps.size(), seconds});
}

void Progress::finish()
{
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - m_begin;
    Row sum{.scene = "together"};
    m_terminal.print("");
    m_terminal.print(m_terminal.styled(
        Style::faint, padded("scene", nameWidth) + aligned("steps", 6) + aligned("seconds", 10)));
    for (const auto& row : m_rows) {
        print(row);
        sum.steps += row.steps;
        sum.seconds += row.seconds;
    }
    print(sum);
    m_terminal.print(m_terminal.styled(Style::green,
        "Played in " + rounded(taken.count(), 2) + " s; nothing was left alive after any scene."));
}

void Progress::print(const Row& row)
{
    m_terminal.print(padded(row.scene, nameWidth) + aligned(std::to_string(row.steps), 6)
        + aligned(rounded(row.seconds, 1), 10));
}

} // namespace fieldbook
