#pragma once

/// @file
/// Waiting for streams in coroutines.

#include "Orrenby/Platform/Errors/Error.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include "Orrenby/Utilities/Streams/More/Task.hpp"
#include "Orrenby/Utilities/Streams/StreamsPublisher.hpp"
#include <deque>
#include <memory>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Thrown by `co_await publisher` when the stream has ended without an element.
///
/// A plain value without content. Not synchronised.
class ORRENBY_EXPORT StreamEndedError final : public Error {
public:
    ~StreamEndedError() override;
    std::string description() const override;
    std::unique_ptr<Error> clone() const override;
    friend bool operator==(const StreamEndedError&, const StreamEndedError&) noexcept { return true; }
};

} // namespace orrenby::Streams

namespace orrenby::inline ORRENBY_ABI::detail {

/// Keeps the elements that nobody has taken yet, and who waits for the next.
///
/// Safe to use from several threads, of which one at a time takes.
template <typename Output, typename Failure> class Inbox {
public:
    using Payload = Streams::Payload<Output, Failure>;

    void put(const Payload& payload)
    {
        auto waiting = Resumption();
        {
            const auto lock = PlainMutex::Guard(m_mutex);
            m_payloads.push_back(payload);
            waiting = std::exchange(m_waiting, {});
        }
        if (waiting)
            waiting();
    }

    void end()
    {
        auto waiting = Resumption();
        {
            const auto lock = PlainMutex::Guard(m_mutex);
            m_hasEnded = true;
            waiting = std::exchange(m_waiting, {});
        }
        if (waiting)
            waiting();
    }

    bool isReady() const
    {
        const auto lock = PlainMutex::Guard(m_mutex);
        return m_hasEnded || !m_payloads.empty();
    }

    /// False if there is nothing to wait for.
    bool wait(Resumption resumption)
    {
        const auto lock = PlainMutex::Guard(m_mutex);
        if (m_hasEnded || !m_payloads.empty())
            return false;
        if (m_waiting)
            fatalError("Two coroutines wait for the next value of one reader", "Utilities/Streams+Await");
        m_waiting = std::move(resumption);
        return true;
    }

    void forgetWaiting()
    {
        auto forgotten = Resumption();
        const auto lock = PlainMutex::Guard(m_mutex);
        forgotten = std::exchange(m_waiting, {});
    }

    /// Nothing after the end.
    std::optional<Payload> take()
    {
        const auto lock = PlainMutex::Guard(m_mutex);
        if (m_payloads.empty())
            return std::nullopt;
        auto first = std::optional<Payload>(std::move(m_payloads.front()));
        m_payloads.pop_front();
        return first;
    }

private:
    mutable PlainMutex m_mutex;
    std::deque<Payload> m_payloads;
    Resumption m_waiting;
    bool m_hasEnded = false;
};

template <typename Output, typename Failure>
Streams::AnyCancellable fill(const std::shared_ptr<Inbox<Output, Failure>>& inbox,
    const Streams::AnyPublisher<Output, Failure>& publisher)
{
    return Streams::sinkUntilEnd(
        publisher, [inbox](const auto& payload) { inbox->put(payload); }, [inbox] { inbox->end(); });
}

/// Waits for the next element of an inbox. It is the coroutine's: it goes away with a coroutine that waits.
template <typename Output, typename Failure> class NextAwaiter {
public:
    explicit NextAwaiter(std::shared_ptr<Inbox<Output, Failure>> inbox, Streams::AnyCancellable handle = {})
        : m_inbox(std::move(inbox))
        , m_handle(std::move(handle))
    {}
    NextAwaiter(const NextAwaiter&) = delete;
    NextAwaiter& operator=(const NextAwaiter&) = delete;
    ~NextAwaiter()
    {
        if (m_isWaiting)
            m_inbox->forgetWaiting();
    }

    bool await_ready() const { return m_inbox->isReady(); }

    template <typename Promise> bool await_suspend(std::coroutine_handle<Promise> frame)
    {
        const auto inbox = m_inbox; // another thread may resume before this has returned
        m_isWaiting = true;
        return inbox->wait(Resumption(frame));
    }

    std::optional<Output> await_resume()
    {
        m_isWaiting = false;
        auto payload = m_inbox->take();
        return payload ? std::optional<Output>(std::move(*payload).get()) : std::nullopt;
    }

private:
    const std::shared_ptr<Inbox<Output, Failure>> m_inbox;
    const Streams::AnyCancellable m_handle;
    bool m_isWaiting = false;
};

/// Waits for an element that has to come.
template <typename Output, typename Failure> class ElementAwaiter : public NextAwaiter<Output, Failure> {
public:
    using NextAwaiter<Output, Failure>::NextAwaiter;

    Output await_resume()
    {
        auto value = NextAwaiter<Output, Failure>::await_resume();
        if (!value)
            throw Streams::StreamEndedError();
        return *std::move(value);
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// `co_await next(publisher)`: subscribes and waits for the first element; gives its value, or nothing if the
/// stream ends without one. What is sent between two such calls is missed: see `values`.
///
/// The coroutine goes on on the thread that sends. An element that is there at once does not interrupt it.
///
/// @snippet Tests/Contracts/Streams/More/AwaitTests.cpp Waiting for one value
///
/// @throws Failure  a failure that comes instead; an `AnyError` throws what it holds, with its own type.
template <StreamsPublisher P> [[nodiscard]] auto next(const P& publisher)
{
    using Inbox = detail::Inbox<typename P::Output, typename P::Failure>;
    const auto inbox = std::make_shared<Inbox>();
    return detail::NextAwaiter<typename P::Output, typename P::Failure>(
        inbox, detail::fill(inbox, publisher.eraseToAnyPublisher()));
}

/// `co_await publisher`, `co_await future`: the value of the first element.
///
/// @snippet Tests/Contracts/Streams/More/AwaitTests.cpp Waiting for a future
///
/// @throws Failure           a failure that comes instead; an `AnyError` throws what it holds.
/// @throws StreamEndedError  if the stream ends without an element.
template <StreamsPublisher P> [[nodiscard]] auto operator co_await(const P& publisher)
{
    using Inbox = detail::Inbox<typename P::Output, typename P::Failure>;
    const auto inbox = std::make_shared<Inbox>();
    return detail::ElementAwaiter<typename P::Output, typename P::Failure>(
        inbox, detail::fill(inbox, publisher.eraseToAnyPublisher()));
}

/// Reads a stream value by value, and misses none: what comes while nobody waits is kept, without a bound but
/// memory.
///
/// @snippet Tests/Contracts/Streams/More/AwaitTests.cpp Reading a stream
///
/// The subscription begins when it is made and ends with it; who waits then waits for ever. One coroutine at
/// a time waits for the next value; a second one is a programming error. Not copyable.
template <typename Output, typename Failure> class Values {
public:
    /// Subscribes at once; what comes before it is asked for waits.
    explicit Values(const AnyPublisher<Output, Failure>& publisher)
        : m_subscription(detail::fill(m_inbox, publisher))
    {}
    Values(const Values&) = delete;
    Values& operator=(const Values&) = delete;

    /// `co_await values.next()`: the next value, or nothing once the stream has ended and all are read. The
    /// coroutine goes on on the thread that sends, if it has to wait.
    /// @throws Failure  a failure that comes; the values behind it can still be read.
    [[nodiscard]] auto next() { return detail::NextAwaiter<Output, Failure>(m_inbox); }

private:
    const std::shared_ptr<detail::Inbox<Output, Failure>> m_inbox
        = std::make_shared<detail::Inbox<Output, Failure>>();
    const AnyCancellable m_subscription;
};

/// A reader of the stream: `auto values = Streams::values(publisher);`.
template <StreamsPublisher P> [[nodiscard]] auto values(const P& publisher)
{
    return Values<typename P::Output, typename P::Failure>(publisher.eraseToAnyPublisher());
}

} // namespace orrenby::Streams
