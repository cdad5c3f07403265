#pragma once

/// @file
/// One subscription for many.

#include "Orrenby/Platform/Scheduling/PlainMutex.hpp"
#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/More/Forward.hpp"
#include "Orrenby/Utilities/Streams/More/Handles.hpp"
#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI::detail {

/// What the subscribers of a shared stream have in common.
template <typename Output, typename Failure>
class SharedStream : public std::enable_shared_from_this<SharedStream<Output, Failure>> {
    using Publisher = Streams::AnyPublisher<Output, Failure>;
    using Subject = Streams::PassthroughSubject<Output, Failure>;

    /// From the first subscriber to the end, or until all have left.
    struct Round {
        Subject subject;
        Handles upstream;
        std::size_t subscribers = 0; // under the lock of the stream
    };

public:
    explicit SharedStream(Publisher publisher)
        : m_publisher(std::move(publisher))
    {}

    /// A subscription of one subscriber, to be cancelled.
    class Seat {
    public:
        Seat(std::shared_ptr<SharedStream> stream, std::shared_ptr<Round> round, Streams::AnyCancellable own)
            : m_stream(std::move(stream))
            , m_round(std::move(round))
            , m_own(std::move(own))
        {}

        void cancel() const
        {
            m_own.cancel();
            m_stream->leave(m_round);
        }

        /// Waits for deliveries to this subscriber, and for the stream itself if this was the last one.
        void cancelAndWait() const
        {
            m_own.cancelAndWait();
            if (m_round->upstream.isCancelled())
                m_round->upstream.cancelAndWait();
        }

    private:
        std::shared_ptr<SharedStream> m_stream;
        std::shared_ptr<Round> m_round;
        Streams::AnyCancellable m_own;
    };

    Seat join(const Subject& subscriber)
    {
        const auto [round, isFirst] = enter();
        auto own = Streams::sinkUntilEnd(
            round->subject.eraseToAnyPublisher(),
            [subscriber](const auto& payload) { forward(subscriber, payload); },
            [subscriber] { finish(subscriber); });
        if (isFirst)
            start(round);
        return Seat(this->shared_from_this(), round, std::move(own));
    }

private:
    std::pair<std::shared_ptr<Round>, bool> enter()
    {
        const auto lock = PlainMutex::Guard(m_mutex);
        const auto isFirst = m_round == nullptr;
        if (isFirst)
            m_round = std::make_shared<Round>();
        ++m_round->subscribers;
        return {m_round, isFirst};
    }

    void start(const std::shared_ptr<Round>& round)
    {
        auto handle = Streams::sinkUntilEnd(
            m_publisher, [subject = round->subject](const auto& payload) { forward(subject, payload); },
            [subject = round->subject, stream = this->weak_from_this(), ended = std::weak_ptr<Round>(round)] {
                if (const auto shared = stream.lock())
                    shared->close(ended.lock());
                finish(subject);
            });
        round->upstream.add(std::move(handle));
    }

    /// Whoever comes from here on begins another round.
    void close(const std::shared_ptr<Round>& round)
    {
        const auto lock = PlainMutex::Guard(m_mutex);
        if (m_round == round)
            m_round.reset();
    }

    void leave(const std::shared_ptr<Round>& round)
    {
        {
            const auto lock = PlainMutex::Guard(m_mutex);
            if (--round->subscribers != 0)
                return;
            if (m_round == round)
                m_round.reset();
        }
        round->upstream.cancel();
    }

    const Publisher m_publisher;
    PlainMutex m_mutex;
    std::shared_ptr<Round> m_round; // under the lock, the one that may be joined
};

struct Share {
    template <typename Output, typename Failure>
    Streams::AnyPublisher<Output, Failure> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher) const
    {
        using Subject = Streams::PassthroughSubject<Output, Failure>;
        const auto stream = std::make_shared<SharedStream<Output, Failure>>(publisher);
        return Streams::create<Output, Failure>(
            [stream](const Subject& subscriber) { return stream->join(subscriber); });
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// One subscription to the stream, made for the first subscriber and ended with the last one, whose elements
/// all subscribers get. Who comes late gets what is sent later.
///
/// A stream that has ended, or that all have left, is subscribed to anew for the next one who comes. Share
/// the result, not the call: every `share` has a subscription of its own.
///
/// The elements that the stream sends while it is being subscribed to reach the first subscriber. Put
/// `CurrentValueSubject` behind it if all shall get the latest one.
///
/// @snippet Tests/Contracts/Streams/More/ShareTests.cpp One subscription for many
inline constexpr auto share = detail::PublisherOperation<detail::Share>();

} // namespace orrenby::Streams
