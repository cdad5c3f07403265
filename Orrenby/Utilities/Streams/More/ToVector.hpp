#pragma once

/// @file
/// All values at once.

#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include "Orrenby/Utilities/Streams/More/Forward.hpp"
#include "Orrenby/Utilities/Streams/More/PublisherOperation.hpp"
#include "Orrenby/Utilities/Streams/More/SinkUntilEnd.hpp"
#include <memory>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

struct ToVector {
    template <typename Output, typename Failure>
    Streams::AnyPublisher<std::vector<Output>, Failure> operator()(
        const Streams::AnyPublisher<Output, Failure>& publisher) const
    {
        using Values = std::vector<Output>;
        using Subject = Streams::PassthroughSubject<Values, Failure>;
        return Streams::create<Values, Failure>([publisher](const Subject& subject) {
            const auto values = std::make_shared<Values>(); // of the thread that delivers
            return Streams::sinkUntilEnd(
                publisher,
                [subject, values](const Streams::Payload<Output, Failure>& payload) {
                    if constexpr (!std::same_as<Failure, Never>) {
                        if (const auto* const error = payload.asError())
                            return subject.send(Streams::Completion<Failure>::failure(*error));
                    }
                    values->push_back(*payload.asValue());
                },
                [subject, values] {
                    subject.send(std::move(*values));
                    finish(subject);
                });
        });
    }
};

} // namespace orrenby::detail

namespace orrenby::inline ORRENBY_ABI::Streams {

/// One vector of all values, once the stream has ended; an empty one if there were none. The first failure
/// takes its place, at once: nothing comes after it.
///
/// @snippet Tests/Contracts/Streams/More/ToVectorTests.cpp All values at once
inline constexpr auto toVector = detail::PublisherOperation<detail::ToVector>();

} // namespace orrenby::Streams
