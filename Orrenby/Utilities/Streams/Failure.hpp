#pragma once

/// @file
/// A failure that is marked as one, for streams whose values and failures have the same or convertible types.

#include "Orrenby/Platform/Export.hpp"
#include <concepts>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Streams {

/// A value in the role of a failure. Made by `failure(…)`; converts as its content does.
template <typename Content> struct FailureOf {
    /// Converts when the content does.
    template <typename Other>
        requires std::constructible_from<Content, Other> FailureOf(FailureOf<Other> other)
            : content(std::move(other.content))
        {}

        /// Use `failure`, which finds the type.
        explicit FailureOf(Content failure)
            : content(std::move(failure))
        {}

        Content content; ///< The failure itself.
};

/// Marks `content` as a failure: `subject.send(Streams::failure("offline"))`.
template <typename Content> FailureOf<std::decay_t<Content>> failure(Content&& content)
{
    return FailureOf<std::decay_t<Content>>(std::forward<Content>(content));
}

} // namespace orrenby::Streams
