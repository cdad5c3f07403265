#pragma once

/// @file
/// Coroutines that wait for streams.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include <coroutine>
#include <cstdint>
#include <exception>
#include <memory>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Runs one coroutine and decides who destroys it. Who wants it to go on while it still runs, leaves that to
/// the thread on which it runs: so it never runs twice at a time, and resuming needs no stack.
///
/// Safe to use from several threads.
class ORRENBY_EXPORT TaskCore {
public:
    explicit TaskCore(std::coroutine_handle<> frame) noexcept
        : m_frame(frame)
    {}
    TaskCore(const TaskCore&) = delete;
    TaskCore& operator=(const TaskCore&) = delete;

    void resume() noexcept;
    void cancel() noexcept;
    void cancelAndWait() noexcept;
    bool isDone() const noexcept;

private:
    void run() noexcept;
    bool isRunningElsewhere() const noexcept;

    mutable PlainMutex m_mutex;
    std::coroutine_handle<> m_frame; // nothing once the coroutine is gone
    std::uintptr_t m_runner = 0;     // the thread on which it runs
    bool m_mustGoOn = false;         // somebody resumed it while it ran
    bool m_isCancelled = false;
};

/// What is resumed when something awaited has come: a `Task`, or a coroutine of another kind.
class Resumption {
public:
    Resumption() = default;

    template <typename Promise>
    explicit Resumption(std::coroutine_handle<Promise> frame)
        : m_frame(frame)
    {
        if constexpr (requires { frame.promise().core(); })
            m_core = frame.promise().core();
    }

    explicit operator bool() const noexcept { return m_frame != nullptr; }

    void operator()() const noexcept
    {
        if (m_core)
            m_core->resume();
        else
            m_frame.resume();
    }

private:
    std::coroutine_handle<> m_frame;
    std::shared_ptr<TaskCore> m_core;
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// A coroutine that runs as soon as it is called, up to the first thing that it has to wait for.
///
/// @snippet Tests/Contracts/Streams/More/TaskTests.cpp A coroutine that waits for streams
///
/// It goes on where that thing comes from: on the thread that sends the awaited element. The handle cancels:
/// when it goes away, or by `cancel()`, a waiting coroutine is destroyed where it waits, with all its
/// variables and subscriptions. One that runs at that moment, on another thread or because it cancels itself,
/// runs on to the next place where it has to wait.
///
/// It returns nothing, and must not let an exception out: that ends the process. Movable; a moved-from handle
/// is empty. Different handles are safe to use from several threads.
class [[nodiscard]] Task {
public:
    class promise_type;

    Task() = default;
    Task(Task&&) noexcept = default;
    Task& operator=(Task&& other) noexcept
    {
        if (const auto old = std::exchange(m_core, std::exchange(other.m_core, nullptr)))
            old->cancel();
        return *this;
    }
    ~Task() { cancel(); }

    /// Stops the coroutine where it waits, or at its next wait, and destroys what it holds.
    void cancel() noexcept
    {
        if (const auto core = m_core)
            core->cancel();
    }

    /// As `cancel()`, and returns only when the coroutine does not run on another thread any more.
    ///
    /// Waits for ever if the coroutine waits for this thread.
    void cancelAndWait() noexcept
    {
        if (const auto core = m_core)
            core->cancelAndWait();
    }

    /// Whether it has run to its end, or is cancelled and destroyed.
    bool isDone() const noexcept { return !m_core || m_core->isDone(); }

private:
    explicit Task(std::shared_ptr<detail::TaskCore> core) noexcept
        : m_core(std::move(core))
    {}

    std::shared_ptr<detail::TaskCore> m_core;
};

/// What the compiler makes a `Task` of.
class Task::promise_type {
    /// Runs the first part of the coroutine, which has been made.
    class Start {
    public:
        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<promise_type> frame) const noexcept
        {
            const auto core = frame.promise().core(); // the coroutine may be gone when it returns
            core->resume();
        }
        void await_resume() const noexcept {}
    };

public:
    promise_type()
        : m_core(std::make_shared<detail::TaskCore>(std::coroutine_handle<promise_type>::from_promise(*this)))
    {}

    /// What the compiler asks for: a coroutine runs at once, gives nothing, ends the process when it throws.
    Task get_return_object() const { return Task(m_core); }
    Start initial_suspend() const noexcept { return {}; }
    std::suspend_always final_suspend() const noexcept { return {}; }
    void return_void() const noexcept {}
    [[noreturn]] void unhandled_exception() const noexcept { std::terminate(); }

    const std::shared_ptr<detail::TaskCore>& core() const noexcept { return m_core; }

private:
    const std::shared_ptr<detail::TaskCore> m_core;
};

} // namespace orrenby::Streams
