#pragma once

/// @file
/// The beginning of a stream.

#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/More/Forward.hpp"
#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include <concepts>
#include <cstdint>

namespace orrenby::inline ORRENBY_ABI::detail {

struct Prefix {
    template <typename Output, typename Failure, std::integral Count>
    Streams::AnyPublisher<Output, Failure> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher, Count wanted) const
    {
        using Subject = Streams::PassthroughSubject<Output, Failure>;
        const auto count = wanted > 0 ? static_cast<std::uint64_t>(wanted) : 0;
        return Streams::create<Output, Failure>([publisher, count](const Subject& subject) {
            if (count == 0) {
                finish(subject);
                return Streams::AnyCancellable();
            }
            return Streams::sinkUntilEnd(
                publisher,
                [subject, missing = count](const auto& payload) mutable {
                    if (missing == 0)
                        return; // a source that goes on inside of the subscribing call
                    --missing;
                    forward(subject, payload);
                    if (missing == 0)
                        finish(subject);
                },
                [subject] { finish(subject); });
        });
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// The first `count` elements, failures among them; then the stream ends and its source is let go. With a
/// count of 0 it ends at once, and nobody subscribes to the source.
///
/// @snippet Tests/Contracts/Streams/More/PrefixTests.cpp The first elements
inline constexpr auto prefix = detail::PublisherOperation<detail::Prefix>();

} // namespace orrenby::Streams
