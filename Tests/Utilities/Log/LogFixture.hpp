#pragma once

/// @file
/// The log as a process finds it when it starts, and what a test sees of it.

#include "Orrenby/Utilities/Log.hpp"
#include <gtest/gtest.h>

/// Installs a capture and puts all settings back, before and after each case.
class LogFixture : public testing::Test {
protected:
    LogFixture()
    {
        reset();
        orrenby::Log::onEvent(capture);
    }
    ~LogFixture() override { reset(); }

    static void reset()
    {
        orrenby::Log::onEvent(nullptr);
        orrenby::Log::onCriticalError(nullptr);
        orrenby::Log::setLevel(orrenby::Log::Level::debug);
        orrenby::Log::setUseEmoji(true);
    }

    /// With codes instead of emoji, and nothing captured of the change.
    void useCodes()
    {
        orrenby::Log::setUseEmoji(false);
        capture.clear();
    }

    orrenby::Log::CaptureHandler capture;
};
