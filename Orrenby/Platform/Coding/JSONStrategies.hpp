#pragma once

/// @file
/// What the strategies of JSON decoders and encoders have in common.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class DateFormatter;

namespace detail {

/// A callable of a strategy, of any type. Copies of a strategy share it.
template <class Result, class... Arguments> struct CustomCoding {
    template <class F> struct By;

    virtual ~CustomCoding() = default;
    virtual Result operator()(Arguments... arguments) const = 0;

    template <class F> static std::shared_ptr<const CustomCoding> of(F function)
    {
        return std::make_shared<const By<F>>(std::move(function));
    }
};

template <class Result, class... Arguments>
template <class F>
struct CustomCoding<Result, Arguments...>::By final : CustomCoding {
    explicit By(F newFunction)
        : function(std::move(newFunction))
    {}
    Result operator()(Arguments... arguments) const override
    {
        return static_cast<Result>(function(arguments...));
    }

    F function;
};

/// Makes a key of the path that ends with the key as it is.
using CustomKeys = CustomCoding<CodingKey, const std::vector<CodingKey>&>;

/// One of several ways, or a callable instead.
///
/// Its public members are those of what derives from it.
template <class KindOfStrategy, class Custom> class JSONStrategy {
public:
    /// Which ways there are.
    using Kind = KindOfStrategy;

    /// Which way was chosen.
    Kind kind() const noexcept { return m_kind; }

    /// The callable of the kind `Custom`; for others nothing.
    const Custom* customCoding() const noexcept
    {
        return m_kind == Kind::Custom ? static_cast<const Custom*>(m_means.get()) : nullptr;
    }

protected:
    /// @param means  What the kind works by: a `Custom` where the kind is that.
    explicit JSONStrategy(Kind kind, std::shared_ptr<const void> means = nullptr) noexcept
        : m_kind(kind)
        , m_means(std::move(means))
    {}

    /// What the chosen way works with; for the kind that knows it.
    const void* means() const noexcept { return m_means.get(); }

private:
    Kind m_kind;
    std::shared_ptr<const void> m_means; ///< One type of pointer for all, which the compiler sees once.
};

enum class JSONDateForm : std::uint8_t {
    DeferredToDate,
    SecondsSince1970,
    MillisecondsSince1970,
    ISO8601,
    Formatted,
    Custom
};

[[noreturn]] ORRENBY_EXPORT void endWithoutFormatter() noexcept;

enum class JSONDataForm : std::uint8_t { Base64, DeferredToData, Custom };

} // namespace detail

/// How a `Date` is coded; see JSONDateDecodingStrategy and JSONDateEncodingStrategy.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
template <class Custom> class JSONDateStrategy : public detail::JSONStrategy<detail::JSONDateForm, Custom> {
public:
    /// Which of the forms was chosen.
    using Kind = detail::JSONDateForm;

    /// The date's own form: a number of seconds since 2001-01-01T00:00:00Z. The default.
    static JSONDateStrategy deferredToDate() { return JSONDateStrategy(Kind::DeferredToDate); }

    /// A number of seconds since 1970-01-01T00:00:00Z, with fractions.
    static JSONDateStrategy secondsSince1970() { return JSONDateStrategy(Kind::SecondsSince1970); }

    /// The same in milliseconds.
    static JSONDateStrategy millisecondsSince1970() { return JSONDateStrategy(Kind::MillisecondsSince1970); }

    /// `2026-11-21T10:00:00Z`, without fractions of seconds. Decoded, an offset like `+02:00` may stand in
    /// place of the `Z`; encoded, seconds are rounded down, and a date outside the years 0 to 9999 is an
    /// error.
    static JSONDateStrategy iso8601() { return JSONDateStrategy(Kind::ISO8601); }

    /// As the formatter writes and reads it, strictly: a text that it does not read is an error.
    ///
    /// @snippet Tests/Platform/Coding/JSONFormattedDateTests.cpp Dates as a formatter writes them
    ///
    /// @param formatter  Kept, and not copied: from now on it is not to be changed. None at all is a
    /// programming error and ends the process.
    ///
    /// Costs what the formatter does. As safe to use from several threads as it is.
    static JSONDateStrategy formatted(std::shared_ptr<const DateFormatter> formatter)
    {
        if (formatter == nullptr)
            detail::endWithoutFormatter();
        return JSONDateStrategy(Kind::Formatted, std::move(formatter));
    }

    /// That of the kind `Formatted`; for others nothing. Good as long as a copy of the strategy lives.
    const DateFormatter* formatter() const noexcept
    {
        return this->kind() == Kind::Formatted ? static_cast<const DateFormatter*>(this->means()) : nullptr;
    }

    /// As the function does it: `Date decode(const Decoder&)`, or `void encode(Date, const Encoder&)`.
    template <class F> static JSONDateStrategy custom(F function)
    {
        return JSONDateStrategy(Kind::Custom, Custom::of(std::move(function)));
    }

private:
    using detail::JSONStrategy<detail::JSONDateForm, Custom>::JSONStrategy;
};

/// How `Data` is coded; see JSONDataDecodingStrategy and JSONDataEncodingStrategy.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
template <class Custom> class JSONDataStrategy : public detail::JSONStrategy<detail::JSONDataForm, Custom> {
public:
    /// Which of the forms was chosen.
    using Kind = detail::JSONDataForm;

    /// A text in Base64, padded, without blanks. The default.
    static JSONDataStrategy base64() { return JSONDataStrategy(Kind::Base64); }
    /// The data's own form: a list of numbers from 0 to 255.
    static JSONDataStrategy deferredToData() { return JSONDataStrategy(Kind::DeferredToData); }

    /// As the function does it: `Data decode(const Decoder&)`, or `void encode(const Data&, const Encoder&)`.
    template <class F> static JSONDataStrategy custom(F function)
    {
        return JSONDataStrategy(Kind::Custom, Custom::of(std::move(function)));
    }

private:
    using detail::JSONStrategy<detail::JSONDataForm, Custom>::JSONStrategy;
};

/// The texts that stand for numbers that JSON has none for.
struct NonConformingFloats {
    std::string positiveInfinity = {}; ///< Instead of positive infinity.
    std::string negativeInfinity = {}; ///< Instead of negative infinity.
    std::string nan = {};              ///< Instead of "not a number".
};

/// How infinities and "not a number" are coded.
///
/// A plain value. Not synchronised.
class JSONNonConformingFloatStrategy {
public:
    /// Not at all: it is an error. The default.
    static JSONNonConformingFloatStrategy throw_() { return {}; }
    /// As these texts.
    static JSONNonConformingFloatStrategy convertFromString(NonConformingFloats texts)
    {
        return JSONNonConformingFloatStrategy(std::move(texts));
    }
    static JSONNonConformingFloatStrategy convertToString(NonConformingFloats texts)
    {
        return JSONNonConformingFloatStrategy(std::move(texts));
    }

    /// Nothing when they are an error. Valid as long as the strategy.
    const NonConformingFloats* texts() const noexcept { return m_areTexts ? &m_texts : nullptr; }

private:
    JSONNonConformingFloatStrategy() = default;
    explicit JSONNonConformingFloatStrategy(NonConformingFloats texts)
        : m_texts(std::move(texts))
        , m_areTexts(true)
    {}

    NonConformingFloats m_texts;
    bool m_areTexts = false;
};

} // namespace orrenby
