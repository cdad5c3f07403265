#pragma once

/// @file
/// Outcomes of decoding, where one value that is wrong shall not spoil all others.

#include "Orrenby/Platform/Coding/Decoder.hpp"
#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include <concepts>
#include <exception>
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// What was thrown, as a failure of this type, if it can be one.
template <class Failure> std::optional<Failure> failureFrom(const std::exception_ptr& thrown)
{
    if constexpr (std::same_as<Failure, std::exception_ptr>)
        return thrown;
    else {
        const AnyError error(thrown);
        if constexpr (std::same_as<Failure, AnyError>)
            return error;
        else if constexpr (std::same_as<Failure, NSError>)
            return error.nsError();
        else {
            if (const auto* same = error.template cast<Failure>())
                return *same;
            if constexpr (std::convertible_to<const DecodingError&, Failure>)
                if (const auto* decodingError = error.template cast<DecodingError>())
                    return std::optional<Failure>(std::in_place, *decodingError);
            return std::nullopt;
        }
    }
}

} // namespace detail

/// The outcome of decoding a `Success` in this place: what is thrown becomes the failure.
///
/// A failure is converted: `AnyError` and `std::exception_ptr` hold every error, `NSError` looks like it; any
/// other type takes errors of its own type and, if it converts from one, a `DecodingError`. An error that the
/// type cannot hold is thrown on, so that a `Result<Success, Never>` decodes as `Success` does. A missing
/// member is no place: there is no outcome, but the error of the object.
///
/// @snippet Tests/Standard/ResultDecodingTests.cpp Decoding what can be decoded
template <DecodableType Success, class Failure> struct Decodable<Result<Success, Failure>> {
    /// Throws only what a `Failure` cannot hold.
    static Result<Success, Failure> decode(const Decoder& decoder)
    {
        using Outcome = Result<Success, Failure>;
        try {
            return Outcome::success(Decodable<Success>::decode(decoder));
        } catch (...) {
            if (auto failure = detail::failureFrom<Failure>(std::current_exception()))
                return Outcome::failure(*std::move(failure));
            throw;
        }
    }
};

} // namespace orrenby
