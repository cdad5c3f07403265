#pragma once

/// @file
/// How dates, bytes, keys and numbers that are none are encoded.

#include "Orrenby/Platform/Coding/JSONStrategies.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Data.hpp"
#include "Orrenby/Platform/Time/Date.hpp"
#include <cstdint>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class Encoder;

/// How dates and data are written; a custom callable takes the value and a `const Encoder&`.
using JSONDateEncodingStrategy = JSONDateStrategy<detail::CustomCoding<void, const Date&, const Encoder&>>;
using JSONDataEncodingStrategy = JSONDataStrategy<detail::CustomCoding<void, const Data&, const Encoder&>>;

namespace detail {

enum class JSONKeyEncoding : std::uint8_t { UseDefaultKeys, ConvertToSnakeCase, Custom };

} // namespace detail

/// How the keys of types become the keys of JSON objects. The keys of maps are never changed.
///
/// A plain value; copies share a custom callable. Safe to use from several threads as far as the callable is.
class JSONKeyEncodingStrategy : public detail::JSONStrategy<detail::JSONKeyEncoding, detail::CustomKeys> {
public:
    /// As they are. The default.
    static JSONKeyEncodingStrategy useDefaultKeys() { return JSONKeyEncodingStrategy(Kind::UseDefaultKeys); }
    /// `firstName` becomes `first_name`, `myURLProperty` becomes `my_url_property`.
    static JSONKeyEncodingStrategy convertToSnakeCase()
    {
        return JSONKeyEncodingStrategy(Kind::ConvertToSnakeCase);
    }
    /// The key that `convert(path)` returns for the path that ends with the type's own key.
    template <class F> static JSONKeyEncodingStrategy custom(F convert)
    {
        return JSONKeyEncodingStrategy(Kind::Custom, detail::CustomKeys::of(std::move(convert)));
    }

private:
    using JSONStrategy::JSONStrategy;
};

} // namespace orrenby
