#pragma once

/// @file
/// Many outcomes as one.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Standard/SequenceOperation.hpp"
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

template <class T> struct ResultTypes {};
template <class S, class F> struct ResultTypes<Result<S, F>> {
    using Collected = Result<std::vector<S>, F>;
};

inline constexpr auto collectOperation = [](auto&& sequence) {
    using Outcome = SequenceElement<decltype(sequence)>;
    using Collected = typename detail::ResultTypes<Outcome>::Collected;
    std::vector<std::remove_cvref_t<decltype(std::declval<Outcome>().unwrap())>> values;
    for (auto&& outcome : sequence) {
        if (auto error = outcome.error())
            return Collected::failure(*std::move(error));
        values.push_back(outcome.unwrap());
    }
    return Collected::success(std::move(values));
};

} // namespace detail

/// The success values of a sequence of results in order, or the first failure. After that no further element
/// is asked for.
///
/// @snippet Tests/Standard/CollectTests.cpp Collecting outcomes
///
/// Linear. Not synchronised.
template <Sequence S> auto collect(S&& sequence) { return detail::collectOperation(sequence); }
inline auto collect() { return detail::boundOperation(detail::collectOperation); }

} // namespace orrenby
