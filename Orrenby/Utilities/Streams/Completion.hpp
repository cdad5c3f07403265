#pragma once

/// @file
/// How a subject ends.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Never.hpp"
#include <concepts>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Streams {

/// The end of a stream: with a failure, which subscribers receive as a last element, or without, of which
/// they are not told.
template <typename Failure> class Completion {
public:
    /// The end with a failure.
    static Completion failure(Failure failure) requires(!std::same_as<Failure, Never>)
    {
        return Completion(std::move(failure));
    }

    /// The end without a failure.
    static Completion finished() { return Completion(std::nullopt); }

    /// The failure of the end, or nothing.
    const std::optional<Failure>& failure() const noexcept { return m_failure; }

    friend bool operator==(const Completion&, const Completion&) = default;

private:
    explicit Completion(std::optional<Failure> failure)
        : m_failure(std::move(failure))
    {}

    std::optional<Failure> m_failure;
};

} // namespace orrenby::Streams
