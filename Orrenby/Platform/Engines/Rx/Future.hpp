#pragma once

/// @file
/// The future of the Rx engine: one attempt for each subscription.

#include "Orrenby/Platform/Engines/Ground/CleanUps.hpp"
#include "Orrenby/Platform/Engines/Ground/CreatePublication.hpp"
#include <memory>

namespace orrenby::inline ORRENBY_ABI::StreamsRx {

/// Makes an attempt whenever somebody subscribes. All share one store of clean-ups, which the end or disposal
/// of any subscription runs.
///
/// `attempt` takes a `Retained<SubjectBase<T>>`, to be finished with the result, and gives a clean-up.
template <class T, class Attempt> detail::Retained<const detail::Publication<T>> makeFuture(Attempt attempt)
{
    auto start = [attempt = std::move(attempt), cleanUps = std::make_shared<detail::CleanUps>()](
                     detail::Retained<detail::SubjectBase<T>> subject) {
        detail::CleanUps::add(cleanUps, attempt(std::move(subject)));
        return detail::CleanUps::Action([cleanUps] { cleanUps->run(); });
    };
    using Publication = detail::CreatePublication<T, decltype(start)>;
    return detail::Retained<const Publication>::adopting(
        new Publication(detail::Engine::Rx, std::move(start)));
}

} // namespace orrenby::StreamsRx
