#pragma once

/// @file
/// Several streams as one.

#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/More/Forward.hpp"
#include "Orrenby/Utilities/Streams/More/Handles.hpp"
#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include <atomic>
#include <memory>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

template <typename Output, typename Failure>
Streams::AnyPublisher<Output, Failure> mergeAll(std::vector<Streams::AnyPublisher<Output, Failure>> sources)
{
    using Subject = Streams::PassthroughSubject<Output, Failure>;
    return Streams::create<Output, Failure>([sources = std::move(sources)](const Subject& subject) {
        const auto handles = Handles();
        const auto running = std::make_shared<std::atomic<std::size_t>>(sources.size());
        for (const auto& source : sources)
            handles.add(Streams::sinkUntilEnd(
                source, [subject](const auto& payload) { forward(subject, payload); },
                [subject, running] {
                    if (running->fetch_sub(1, std::memory_order_acq_rel) == 1)
                        finish(subject);
                }));
        return handles;
    });
}

struct Merge {
    template <StreamsPublisher First, StreamsPublisher... Others>
        requires(sizeof...(Others) >= 1
            && (std::same_as<Streams::AnyPublisher<typename First::Output, typename First::Failure>,
                    Streams::AnyPublisher<typename Others::Output, typename Others::Failure>> && ...))
    auto operator()(const First& first, const Others&... others) const
    {
        using Publisher = Streams::AnyPublisher<typename First::Output, typename First::Failure>;
        return mergeAll(std::vector<Publisher>{first.eraseToAnyPublisher(), others.eraseToAnyPublisher()...});
    }
};

struct MergeWith {
    template <StreamsPublisher... Others>
        requires(sizeof...(Others) >= 1)
    [[nodiscard]] auto operator()(const Others&... others) const
    {
        return UnappliedOperation([others...](
            const auto& first) requires std::invocable<Merge, decltype(first), const Others&...> {
            return Merge()(first, others...);
        });
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// Every element of two or more streams of one type, as it comes: `merge(a, b, c)`. Ends when all have ended.
///
/// The streams are subscribed to in the order in which they are named. Those that send on several threads at
/// once do not overlap: the elements of one wait for the delivery of the other's, and are delivered by its
/// thread. What each stream sends keeps its order.
///
/// @snippet Tests/Contracts/Streams/More/MergeTests.cpp Several streams as one
inline constexpr auto merge = detail::Merge();

/// `merge` for a chain: `a | mergeWith(b, c)`.
inline constexpr auto mergeWith = detail::MergeWith();

} // namespace orrenby::Streams
