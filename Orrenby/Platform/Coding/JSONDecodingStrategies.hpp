#pragma once

/// @file
/// How dates, bytes, keys and numbers that are none are decoded.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

class Decoder;

namespace detail {

/// A callable that decodes a `Value`, of any type.
template <class Value> struct CustomDecoding {
    virtual ~CustomDecoding() = default;
    virtual Value decode(const Decoder& decoder) const = 0;
};

template <class Value, class F> struct CustomDecodingBy final : CustomDecoding<Value> {
    explicit CustomDecodingBy(F newFunction)
        : function(std::move(newFunction))
    {}
    Value decode(const Decoder& decoder) const override { return function(decoder); }

    F function;
};

/// A callable that makes a key of the path that ends with the key as it is written.
struct CustomKeys {
    virtual ~CustomKeys() = default;
    virtual CodingKey key(const std::vector<CodingKey>& path) const = 0;
};

template <class F> struct CustomKeysBy final : CustomKeys {
    explicit CustomKeysBy(F newFunction)
        : function(std::move(newFunction))
    {}
    CodingKey key(const std::vector<CodingKey>& path) const override { return function(path); }

    F function;
};

} // namespace detail

/// How a `Date` is decoded.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONDateDecodingStrategy {
public:
    enum class Kind : std::uint8_t {
        DeferredToDate,
        SecondsSince1970,
        MillisecondsSince1970,
        ISO8601,
        Custom
    };

    /// The date's own form: a number of seconds since 2001-01-01T00:00:00Z. The default.
    static JSONDateDecodingStrategy deferredToDate() { return {}; }
    static JSONDateDecodingStrategy secondsSince1970()
    {
        return JSONDateDecodingStrategy(Kind::SecondsSince1970);
    }
    static JSONDateDecodingStrategy millisecondsSince1970()
    {
        return JSONDateDecodingStrategy(Kind::MillisecondsSince1970);
    }
    /// `2026-11-21T10:00:00Z`, or an offset like `+02:00` in place of the `Z`. No fractions of seconds.
    static JSONDateDecodingStrategy iso8601() { return JSONDateDecodingStrategy(Kind::ISO8601); }
    /// What `decode(const Decoder&)` returns.
    template <class F> static JSONDateDecodingStrategy custom(F decode)
    {
        JSONDateDecodingStrategy result(Kind::Custom);
        result.m_custom = std::make_shared<const detail::CustomDecodingBy<Date, F>>(std::move(decode));
        return result;
    }

    Kind kind() const noexcept { return m_kind; }
    const detail::CustomDecoding<Date>* customDecoding() const noexcept { return m_custom.get(); }

private:
    JSONDateDecodingStrategy() = default;
    explicit JSONDateDecodingStrategy(Kind kind) noexcept
        : m_kind(kind)
    {}

    Kind m_kind = Kind::DeferredToDate;
    std::shared_ptr<const detail::CustomDecoding<Date>> m_custom;
};

/// How `Data` is decoded.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONDataDecodingStrategy {
public:
    enum class Kind : std::uint8_t { Base64, DeferredToData, Custom };

    /// A text in Base64, padded, without blanks. The default.
    static JSONDataDecodingStrategy base64() { return {}; }
    /// The data's own form: a list of numbers from 0 to 255.
    static JSONDataDecodingStrategy deferredToData()
    {
        return JSONDataDecodingStrategy(Kind::DeferredToData);
    }
    /// What `decode(const Decoder&)` returns.
    template <class F> static JSONDataDecodingStrategy custom(F decode)
    {
        JSONDataDecodingStrategy result(Kind::Custom);
        result.m_custom = std::make_shared<const detail::CustomDecodingBy<Data, F>>(std::move(decode));
        return result;
    }

    Kind kind() const noexcept { return m_kind; }
    const detail::CustomDecoding<Data>* customDecoding() const noexcept { return m_custom.get(); }

private:
    JSONDataDecodingStrategy() = default;
    explicit JSONDataDecodingStrategy(Kind kind) noexcept
        : m_kind(kind)
    {}

    Kind m_kind = Kind::Base64;
    std::shared_ptr<const detail::CustomDecoding<Data>> m_custom;
};

/// How the keys of JSON objects become the keys that types ask for. The keys of maps are never changed.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONKeyDecodingStrategy {
public:
    enum class Kind : std::uint8_t { UseDefaultKeys, ConvertFromSnakeCase, Custom };

    /// As they are. The default.
    static JSONKeyDecodingStrategy useDefaultKeys() { return {}; }
    /// `first_name` becomes `firstName`; underscores at either end stay.
    static JSONKeyDecodingStrategy convertFromSnakeCase()
    {
        return JSONKeyDecodingStrategy(Kind::ConvertFromSnakeCase);
    }
    /// The key that `convert(path)` returns for the path that ends with the key as it is written.
    template <class F> static JSONKeyDecodingStrategy custom(F convert)
    {
        JSONKeyDecodingStrategy result(Kind::Custom);
        result.m_custom = std::make_shared<const detail::CustomKeysBy<F>>(std::move(convert));
        return result;
    }

    Kind kind() const noexcept { return m_kind; }
    const detail::CustomKeys* customKeys() const noexcept { return m_custom.get(); }

private:
    JSONKeyDecodingStrategy() = default;
    explicit JSONKeyDecodingStrategy(Kind kind) noexcept
        : m_kind(kind)
    {}

    Kind m_kind = Kind::UseDefaultKeys;
    std::shared_ptr<const detail::CustomKeys> m_custom;
};

/// The texts that stand for numbers that JSON has none for.
struct NonConformingFloats {
    std::string positiveInfinity = {};
    std::string negativeInfinity = {};
    std::string nan = {};
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

    /// Nothing when they are an error.
    const std::optional<NonConformingFloats>& texts() const noexcept { return m_texts; }

private:
    JSONNonConformingFloatStrategy() = default;
    explicit JSONNonConformingFloatStrategy(NonConformingFloats texts)
        : m_texts(std::move(texts))
    {}

    std::optional<NonConformingFloats> m_texts;
};

} // namespace orrenby
