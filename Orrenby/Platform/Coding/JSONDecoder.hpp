#pragma once

/// @file
/// JSON text to values of known types.

#include "Orrenby/Platform/Coding/Decodable.hpp"
#include "Orrenby/Platform/Coding/DecodingSession.hpp"
#include "Orrenby/Platform/Coding/JSONDecodingStrategies.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <cstddef>
#include <exception>
#include <span>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

template <class Success, class Failure> class Result;

/// Decodes JSON text into values of the program's own types.
///
/// Which types: see Decodable.hpp. Public aggregates need nothing but AggregateCoding.hpp, classes a
/// description (DescribedCoding.hpp) or a static `init(const Decoder&)`. A value is complete or not there at
/// all.
///
/// @snippet Tests/Platform/Coding/JSONDecoderTests.cpp Decoding a response
///
/// The text is in UTF-8, UTF-16 or UTF-32, strict as `JSONDocument` says; members nobody asks for are
/// ignored. Linear. Decoding is safe to use from several threads; changing the settings is not.
class ORRENBY_EXPORT JSONDecoder {
public:
    /// The strategies under the names that they have beside a decoder.
    using DateDecodingStrategy = JSONDateDecodingStrategy;
    using DataDecodingStrategy = JSONDataDecodingStrategy;
    using KeyDecodingStrategy = JSONKeyDecodingStrategy;
    using NonConformingFloatDecodingStrategy = JSONNonConformingFloatStrategy;

    JSONDecoder() = default;
    JSONDecoder(const JSONDecoder&) = delete;
    JSONDecoder& operator=(const JSONDecoder&) = delete;

    /// Throws `DecodingError`, with the path and the place of what is wrong, and whatever a type's own `init`
    /// throws. Bytes that are no JSON are `dataCorrupted` with the `JSONReadError` as underlying error.
    template <class T> T decode(std::span<const std::byte> data) const
    {
        detail::DecodingSession session(data, m_options);
        return detail::decodeAt<T>({&session, JSONDocument::root, nullptr});
    }
    template <class T> T decode(std::string_view utf8) const { return decode<T>(detail::bytesOf(utf8)); }

    /// The outcome of `decode`; throws nothing. Include Result.hpp to call it.
    template <class T> Result<T, AnyError> tryDecode(std::span<const std::byte> data) const
    {
        try {
            return Result<T, AnyError>::success(decode<T>(data));
        } catch (...) {
            return Result<T, AnyError>::failure(AnyError(std::current_exception()));
        }
    }
    template <class T> Result<T, AnyError> tryDecode(std::string_view utf8) const
    {
        return tryDecode<T>(detail::bytesOf(utf8));
    }

    /// How what JSON has no form for is read. Dates are numbers of seconds since 2001, data is Base64, keys
    /// stay as they are and numbers are finite unless something else is set. Set them before decoding begins,
    /// not during it.
    const DateDecodingStrategy& dateDecodingStrategy() const noexcept { return m_options.dates; }
    void setDateDecodingStrategy(DateDecodingStrategy strategy) { m_options.dates = std::move(strategy); }
    const DataDecodingStrategy& dataDecodingStrategy() const noexcept { return m_options.data; }
    void setDataDecodingStrategy(DataDecodingStrategy strategy) { m_options.data = std::move(strategy); }
    const KeyDecodingStrategy& keyDecodingStrategy() const noexcept { return m_options.keys; }
    void setKeyDecodingStrategy(KeyDecodingStrategy strategy) { m_options.keys = std::move(strategy); }
    const NonConformingFloatDecodingStrategy& nonConformingFloatDecodingStrategy() const noexcept
    {
        return m_options.floats;
    }
    void setNonConformingFloatDecodingStrategy(NonConformingFloatDecodingStrategy strategy)
    {
        m_options.floats = std::move(strategy);
    }

    /// Whatever the types need to know; each decoder of a call gives it. Empty at first.
    const Dictionary& userInfo() const noexcept { return m_options.userInfo; }
    Dictionary& userInfo() noexcept { return m_options.userInfo; }
    void setUserInfo(Dictionary userInfo) { m_options.userInfo = std::move(userInfo); }

private:
    detail::JSONDecodingOptions m_options;
};

} // namespace orrenby
