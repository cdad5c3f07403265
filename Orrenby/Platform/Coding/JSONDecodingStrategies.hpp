#pragma once

/// @file
/// How dates, bytes, keys and numbers that are none are decoded.

#include "Orrenby/Platform/Coding/JSONStrategies.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class Decoder;

/// How dates and data are read; a custom callable takes a `const Decoder&` and gives the value.
using JSONDateDecodingStrategy = JSONDateStrategy<detail::CustomCoding<Date, const Decoder&>>;
using JSONDataDecodingStrategy = JSONDataStrategy<detail::CustomCoding<Data, const Decoder&>>;

namespace detail {

enum class JSONKeyDecoding : std::uint8_t { UseDefaultKeys, ConvertFromSnakeCase, Custom };

} // namespace detail

/// How the keys of JSON objects become the keys that types ask for. The keys of maps are never changed.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONKeyDecodingStrategy : public detail::JSONStrategy<detail::JSONKeyDecoding, detail::CustomKeys> {
public:
    /// As they are. The default.
    static JSONKeyDecodingStrategy useDefaultKeys() { return JSONKeyDecodingStrategy(Kind::UseDefaultKeys); }
    /// `first_name` becomes `firstName`; underscores at either end stay.
    static JSONKeyDecodingStrategy convertFromSnakeCase()
    {
        return JSONKeyDecodingStrategy(Kind::ConvertFromSnakeCase);
    }
    /// The key that `convert(path)` returns for the path that ends with the key as it is written.
    template <class F> static JSONKeyDecodingStrategy custom(F convert)
    {
        return JSONKeyDecodingStrategy(Kind::Custom, detail::CustomKeys::of(std::move(convert)));
    }

private:
    using JSONStrategy::JSONStrategy;
};

} // namespace orrenby
