#pragma once

/// @file
/// How dates, bytes and keys are encoded.

#include "Orrenby/Platform/Coding/CodingKey.hpp"
#include "Orrenby/Platform/Coding/JSONDecodingStrategies.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>
#include <memory>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class Encoder;

namespace detail {

/// A callable that encodes a `Value`, of any type.
template <class Value> struct CustomEncoding {
    virtual ~CustomEncoding() = default;
    virtual void encode(const Value& value, const Encoder& encoder) const = 0;
};

template <class Value, class F> struct CustomEncodingBy final : CustomEncoding<Value> {
    explicit CustomEncodingBy(F newFunction)
        : function(std::move(newFunction))
    {}
    void encode(const Value& value, const Encoder& encoder) const override { function(value, encoder); }

    F function;
};

} // namespace detail

/// How a `Date` is encoded.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONDateEncodingStrategy {
public:
    enum class Kind : std::uint8_t {
        DeferredToDate,
        SecondsSince1970,
        MillisecondsSince1970,
        ISO8601,
        Custom
    };

    /// The date's own form: a number of seconds since 2001-01-01T00:00:00Z. The default.
    static JSONDateEncodingStrategy deferredToDate() { return {}; }
    static JSONDateEncodingStrategy secondsSince1970()
    {
        return JSONDateEncodingStrategy(Kind::SecondsSince1970);
    }
    static JSONDateEncodingStrategy millisecondsSince1970()
    {
        return JSONDateEncodingStrategy(Kind::MillisecondsSince1970);
    }
    /// `2026-11-21T10:00:00Z`, whole seconds rounded down. A date outside the years 0 to 9999 is an error.
    static JSONDateEncodingStrategy iso8601() { return JSONDateEncodingStrategy(Kind::ISO8601); }
    /// What `encode(date, const Encoder&)` writes.
    template <class F> static JSONDateEncodingStrategy custom(F encode)
    {
        JSONDateEncodingStrategy result(Kind::Custom);
        result.m_custom = std::make_shared<const detail::CustomEncodingBy<Date, F>>(std::move(encode));
        return result;
    }

    Kind kind() const noexcept { return m_kind; }
    const detail::CustomEncoding<Date>* customEncoding() const noexcept { return m_custom.get(); }

private:
    JSONDateEncodingStrategy() = default;
    explicit JSONDateEncodingStrategy(Kind kind) noexcept
        : m_kind(kind)
    {}

    Kind m_kind = Kind::DeferredToDate;
    std::shared_ptr<const detail::CustomEncoding<Date>> m_custom;
};

/// How `Data` is encoded.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONDataEncodingStrategy {
public:
    enum class Kind : std::uint8_t { Base64, DeferredToData, Custom };

    /// A text in Base64, padded. The default.
    static JSONDataEncodingStrategy base64() { return {}; }
    /// The data's own form: a list of numbers from 0 to 255.
    static JSONDataEncodingStrategy deferredToData()
    {
        return JSONDataEncodingStrategy(Kind::DeferredToData);
    }
    /// What `encode(data, const Encoder&)` writes.
    template <class F> static JSONDataEncodingStrategy custom(F encode)
    {
        JSONDataEncodingStrategy result(Kind::Custom);
        result.m_custom = std::make_shared<const detail::CustomEncodingBy<Data, F>>(std::move(encode));
        return result;
    }

    Kind kind() const noexcept { return m_kind; }
    const detail::CustomEncoding<Data>* customEncoding() const noexcept { return m_custom.get(); }

private:
    JSONDataEncodingStrategy() = default;
    explicit JSONDataEncodingStrategy(Kind kind) noexcept
        : m_kind(kind)
    {}

    Kind m_kind = Kind::Base64;
    std::shared_ptr<const detail::CustomEncoding<Data>> m_custom;
};

/// How the keys of types become the keys of JSON objects. The keys of maps are never changed.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONKeyEncodingStrategy {
public:
    enum class Kind : std::uint8_t { UseDefaultKeys, ConvertToSnakeCase, Custom };

    /// As they are. The default.
    static JSONKeyEncodingStrategy useDefaultKeys() { return {}; }
    /// `firstName` becomes `first_name`, `myURLProperty` becomes `my_url_property`.
    static JSONKeyEncodingStrategy convertToSnakeCase()
    {
        return JSONKeyEncodingStrategy(Kind::ConvertToSnakeCase);
    }
    /// The key that `convert(path)` returns for the path that ends with the type's own key.
    template <class F> static JSONKeyEncodingStrategy custom(F convert)
    {
        JSONKeyEncodingStrategy result(Kind::Custom);
        result.m_custom = std::make_shared<const detail::CustomKeysBy<F>>(std::move(convert));
        return result;
    }

    Kind kind() const noexcept { return m_kind; }
    const detail::CustomKeys* customKeys() const noexcept { return m_custom.get(); }

private:
    JSONKeyEncodingStrategy() = default;
    explicit JSONKeyEncodingStrategy(Kind kind) noexcept
        : m_kind(kind)
    {}

    Kind m_kind = Kind::UseDefaultKeys;
    std::shared_ptr<const detail::CustomKeys> m_custom;
};

} // namespace orrenby
