#pragma once

/// @file
/// The clock of a test's world. Not in the umbrella header: part of VirtualWorld.cpp.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include "Orrenby/Platform/World/Clock.hpp"
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::testing {

/// Shows what it is set to. Safe to use from several threads.
class VirtualClock final : public Clock {
public:
    explicit VirtualClock(Date start) noexcept
        : m_start(start)
    {}

    Date start() const noexcept { return m_start; }
    Date now() const override { return m_start + m_elapsed; }
    double monotonicSeconds() const override { return m_elapsed; }
    bool runsByItself() const override { return false; }
    void addObserver(std::weak_ptr<Observer> observer) override;

    /// Ignored when it is not later.
    void moveTo(double elapsed);

private:
    const Date m_start;
    std::atomic<double> m_elapsed = 0;
    std::mutex m_mutex;
    std::vector<std::weak_ptr<Observer>> m_observers;
};

} // namespace orrenby::testing
