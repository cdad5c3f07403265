#pragma once

/// @file
/// What somebody sees who wants to know that the scenes work, not what is said in them.

#include "Scenario/Scenario.hpp"
#include "Terminal/Terminal.hpp"
#include <chrono>
#include <cstddef>
#include <vector>

namespace fieldbook {

/// Prints a line for each scene while it is played, and a table of all at the end.
class Progress {
public:
    /// @param terminal  Outlives it.
    Progress(Terminal& terminal, std::size_t sceneCount);

    void begin(const Scene& scene);

    /// @param seconds  How much time passed in the scene.
    void end(const Scene& scene, double seconds);

    /// The table, and how long all of it took.
    void finish();

private:
    struct Row {
        std::string scene;
        std::size_t steps = 0;
        double seconds = 0;
    };

    void print(const Row& row);

    Terminal& m_terminal;
    std::size_t m_sceneCount;
    std::vector<Row> m_rows;
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

} // namespace fieldbook
