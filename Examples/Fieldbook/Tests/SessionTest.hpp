#pragma once

/// @file
/// Tests of parts that print and need a session for that.

#include "Examples/Fieldbook/Application/Session.hpp"
#include "Examples/Fieldbook/Tests/Printout.hpp"
#include <gtest/gtest.h>
#include <string>

namespace fieldbook {

/// Has a session of its own in real time, without a folder and with nobody signed in.
class SessionTest : public ::testing::Test {
protected:
    /// Everything so far, the steps of lives too.
    std::string printed() const { return output.text(); }

    Printout output;
    EventLoop loop;
    Terminal terminal{output.descriptor(), false};
    LifeTrace trace{terminal};
    Session session{loop, terminal, trace, {}, Course::watch};
};

} // namespace fieldbook
