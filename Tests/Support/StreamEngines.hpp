#pragma once

/// @file
/// Runs a stream test against both engines.

#include "Orrenby/Testing/TestAccess.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orrenby::testing {

/// A failure with a number, to tell one from another.
struct Trouble {
    int number = 0;
    friend bool operator==(const Trouble&, const Trouble&) = default;
};

/// The suite of every contract test: `INSTANTIATE_ON_BOTH_ENGINES(Suite)` runs its cases once for each
/// engine.
class BothEngines : public ::testing::TestWithParam<detail::Engine> {
protected:
    void SetUp() override
    {
        TestAccess::resetEngineChoice();
        Streams::set({.isCombineEnabledWhenAvailable = GetParam() == detail::Engine::Combine});
        ASSERT_EQ(detail::chosenEngine(), GetParam());
    }
};

inline std::string engineName(const ::testing::TestParamInfo<detail::Engine>& info)
{
    return info.param == detail::Engine::Combine ? "Combine" : "Rx";
}

/// What a subscriber saw, in order.
template <class Output, class Failure> struct Received {
    using Payload = Streams::Payload<Output, Failure>;
    std::vector<Payload> payloads;

    auto recorder()
    {
        return [this](const Payload& payload) { payloads.push_back(payload); };
    }
};

} // namespace orrenby::testing

#define INSTANTIATE_ON_BOTH_ENGINES(suite)                                                                   \
    INSTANTIATE_TEST_SUITE_P(Engines, suite,                                                                 \
        ::testing::Values(orrenby::detail::Engine::Combine, orrenby::detail::Engine::Rx),                    \
        orrenby::testing::engineName)
