#pragma once

/// @file
/// Values of known types to JSON text.

#include "Orrenby/Platform/Coding/Encodable.hpp"
#include "Orrenby/Platform/Coding/EncodingSession.hpp"
#include "Orrenby/Platform/Coding/JSONEncodingStrategies.hpp"
#include "Orrenby/Platform/Coding/JSONOutput.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <exception>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

template <class Success, class Failure> class Result;

/// Encodes values of the program's own types as JSON text in UTF-8.
///
/// Which types: see Encodable.hpp. Public aggregates need nothing but AggregateCoding.hpp, classes a
/// description (DescribedCoding.hpp) or an `encode(const Encoder&) const`.
///
/// @snippet Tests/Platform/Coding/JSONEncoderTests.cpp Encoding a request
///
/// Members stand in the order in which they are encoded. `/` is not escaped; floating numbers have the fewest
/// digits that read back as the same number. Text is written as values are visited: sorted or pretty output
/// costs a second pass. Encoding is safe to use from several threads; changing the settings is not.
class ORRENBY_EXPORT JSONEncoder {
public:
    /// The strategies under the names that they have beside an encoder.
    using DateEncodingStrategy = JSONDateEncodingStrategy;
    using DataEncodingStrategy = JSONDataEncodingStrategy;
    using KeyEncodingStrategy = JSONKeyEncodingStrategy;
    using NonConformingFloatEncodingStrategy = JSONNonConformingFloatStrategy;
    using OutputFormatting = JSONOutput;

    /// `Result<Data, AnyError>`, which has to be complete only where `tryEncode` is called.
    template <class T> using Outcome = Result<typename detail::Dependent<Data, T>::type, AnyError>;

    JSONEncoder() = default;
    JSONEncoder(const JSONEncoder&) = delete;
    JSONEncoder& operator=(const JSONEncoder&) = delete;

    /// Throws `EncodingError` with the path of what JSON cannot hold, and whatever a type's own `encode`
    /// throws.
    template <class T> Data encode(const T& value) const
    {
        detail::EncodingSession session(m_options);
        detail::encodeAt(value, session.root());
        return dataFromText(session.finished().view());
    }

    /// The same as text.
    template <class T> std::string encodeText(const T& value) const
    {
        detail::EncodingSession session(m_options);
        detail::encodeAt(value, session.root());
        return std::string(session.finished().view());
    }

    /// The outcome of `encode`; throws nothing. Include Result.hpp to call it.
    template <class T> Outcome<T> tryEncode(const T& value) const
    {
        try {
            return Outcome<T>::success(encode(value));
        } catch (...) {
            return Outcome<T>::failure(AnyError(std::current_exception()));
        }
    }

    /// How the text is laid out, and how what JSON has no form for is written. The text is compact, dates are
    /// numbers of seconds since 2001, data is Base64, keys stay as they are and numbers must be finite unless
    /// something else is set. Set them before encoding begins, not during it.
    OutputFormatting outputFormatting() const noexcept { return m_options.output; }
    void setOutputFormatting(OutputFormatting output) { m_options.output = output; }
    const DateEncodingStrategy& dateEncodingStrategy() const noexcept { return m_options.dates; }
    void setDateEncodingStrategy(DateEncodingStrategy strategy) { m_options.dates = std::move(strategy); }
    const DataEncodingStrategy& dataEncodingStrategy() const noexcept { return m_options.data; }
    void setDataEncodingStrategy(DataEncodingStrategy strategy) { m_options.data = std::move(strategy); }
    const KeyEncodingStrategy& keyEncodingStrategy() const noexcept { return m_options.keys; }
    void setKeyEncodingStrategy(KeyEncodingStrategy strategy) { m_options.keys = std::move(strategy); }
    const NonConformingFloatEncodingStrategy& nonConformingFloatEncodingStrategy() const noexcept
    {
        return m_options.floats;
    }
    void setNonConformingFloatEncodingStrategy(NonConformingFloatEncodingStrategy strategy)
    {
        m_options.floats = std::move(strategy);
    }

    /// Whatever the types need to know; each encoder of a call gives it. Empty at first.
    const Dictionary& userInfo() const noexcept { return m_options.userInfo; }
    Dictionary& userInfo() noexcept { return m_options.userInfo; }
    void setUserInfo(Dictionary userInfo) { m_options.userInfo = std::move(userInfo); }

private:
    detail::JSONEncodingOptions m_options;
};

} // namespace orrenby
