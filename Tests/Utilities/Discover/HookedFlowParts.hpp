#pragma once

/// @file
/// Flows and contexts whose hooks do what a test wants.

#include "Tests/Support/DiscoverParts.hpp"
#include <functional>

namespace orrenby::testing {

/// Calls a function in its hook.
class HookedFlow : public DiaryFlow {
public:
    using DiaryFlow::DiaryFlow;
    std::function<void()> onStart = [] {};

protected:
    void didStart() override
    {
        DiaryFlow::didStart();
        onStart();
    }
};

/// Calls a function when its context resigns.
class HookedContext : public DiaryContext {
public:
    using DiaryContext::DiaryContext;
    std::function<void()> onResign = [] {};

protected:
    void willResignActive() override
    {
        DiaryContext::willResignActive();
        const auto hook = onResign; // which may replace itself
        hook();
    }
};

} // namespace orrenby::testing
