#pragma once

/// @file
/// Showing in which order the tree comes up and goes down.

#include "Terminal/Terminal.hpp"
#include <string>
#include <string_view>

namespace fieldbook {

/// What is alive at this moment: `flows 2  contexts 2  workers 3  subscriptions 3`.
std::string describeLiveParts();

/// Whether nothing of the tree is left.
bool isNothingLive();

/// Prints one line for each step in the life of a flow, a context or a worker, with what is alive by then.
///
/// The parts of the tree call it in their hooks and destructors. Not synchronised.
class LifeTrace {
public:
    /// @param terminal  Outlives the trace.
    explicit LifeTrace(Terminal& terminal)
        : m_terminal(terminal)
    {}

    /// Begins a new section.
    void begin(std::string_view title);

    void step(std::string_view what);

private:
    Terminal& m_terminal;
};

} // namespace fieldbook
