#pragma once

/// @file
/// Typed values out of dictionaries.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Result.hpp"
#include "Orrenby/Standard/JSON/JSONAccess.hpp"
#include "Orrenby/Standard/JSON/JSONError.hpp"
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

// The operations of this header share these rules.
//
// `T` is what `Any::cast` gives: an integer of any width, `double`, `bool`, `std::string`, `Data`,
// `Dictionary`, a vector or map of these, `Ref` of a class, any type that was put in. Kinds are strict: an
// integer is no `double` and neither is a boolean. A number that was read from a JSON text is both, if
// nothing is lost. The null marker is none of them: it counts as present and is a mismatch.

/// The member as a `T`.
///
/// Throws `JSONError`: `keyNotFound` when there is no such member, `typeMismatch` when it is no `T`.
///
/// @snippet Tests/Standard/JSON/DictionaryJSONTests.cpp Reading typed members
///
/// Costs the search for the key and a copy of the value. Not synchronised.
template <detail::JSONRequestable T> T get(const Dictionary& dictionary, std::string_view key)
{
    return detail::castMember<T>(key, detail::requiredMember(dictionary, key));
}

/// The member as a `T`, or nothing when there is no such member. Throws `JSONError::typeMismatch` when there
/// is one that is no `T`.
template <detail::JSONRequestable T>
std::optional<T> getOptional(const Dictionary& dictionary, std::string_view key)
{
    const Any* value = dictionary.find(key);
    return value != nullptr ? std::optional<T>(detail::castMember<T>(key, *value)) : std::nullopt;
}

/// What `transform` makes of the member.
///
/// It takes a `T` and gives an optional. Throws what `get<T>` throws, `JSONError::transformFailed` when it
/// gives nothing, and what it throws itself.
///
/// @snippet Tests/Standard/JSON/DictionaryJSONTests.cpp Transforming members
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
detail::JSONTransformed<F, T> map(const Dictionary& dictionary, std::string_view key, F&& transform)
{
    return detail::transformMember<T>(key, detail::requiredMember(dictionary, key), transform);
}

/// As `map`, but a missing member gives nothing.
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
std::optional<detail::JSONTransformed<F, T>> mapOptional(
    const Dictionary& dictionary, std::string_view key, F&& transform)
{
    if (const Any* value = dictionary.find(key))
        return detail::transformMember<T>(key, *value, transform);
    return std::nullopt;
}

/// What `transform` makes of each element of the list that the member is, in order.
///
/// Every element has to be a `T`, which is looked at before the first is transformed. Throws as `map` does;
/// the value of `typeMismatch` and `transformFailed` is the whole list. The first element of which nothing is
/// made ends the work: there is no list with gaps.
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
std::vector<detail::JSONTransformed<F, T>> mapList(
    const Dictionary& dictionary, std::string_view key, F&& transform)
{
    return detail::transformElements<T>(key, detail::requiredMember(dictionary, key), transform);
}

/// As `mapList`, but a missing member gives nothing.
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
std::optional<std::vector<detail::JSONTransformed<F, T>>> mapOptionalList(
    const Dictionary& dictionary, std::string_view key, F&& transform)
{
    if (const Any* value = dictionary.find(key))
        return detail::transformElements<T>(key, *value, transform);
    return std::nullopt;
}

// The same as outcomes, which throw nothing. Where a transform could throw anything, the failure is any
// error.

/// The outcome of `get`; throws nothing.
template <detail::JSONRequestable T>
Result<T, JSONError> tryGet(const Dictionary& dictionary, std::string_view key)
{
    using Outcome = Result<T, JSONError>;
    const Any* value = dictionary.find(key);
    if (value == nullptr)
        return Outcome::failure(JSONError::keyNotFound(key));
    if (auto cast = value->cast<T>())
        return Outcome::success(*std::move(cast));
    return Outcome::failure(JSONError::typeMismatch(key, *value));
}

/// The outcome of `getOptional`; throws nothing.
template <detail::JSONRequestable T>
Result<std::optional<T>, JSONError> tryGetOptional(const Dictionary& dictionary, std::string_view key)
{
    using Outcome = Result<std::optional<T>, JSONError>;
    const Any* value = dictionary.find(key);
    if (value == nullptr)
        return Outcome::success(std::nullopt);
    if (auto cast = value->cast<T>())
        return Outcome::success(std::move(cast));
    return Outcome::failure(JSONError::typeMismatch(key, *value));
}

/// The outcome of `map`. Where the transform could throw anything, the failure is any error.
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
auto tryMap(const Dictionary& dictionary, std::string_view key, F&& transform)
{
    return detail::outcomeOf([&] { return map<T>(dictionary, key, transform); });
}

/// The outcome of `mapOptional`. Where the transform could throw anything, the failure is any error.
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
auto tryMapOptional(const Dictionary& dictionary, std::string_view key, F&& transform)
{
    return detail::outcomeOf([&] { return mapOptional<T>(dictionary, key, transform); });
}

/// The outcome of `mapList`. Where the transform could throw anything, the failure is any error.
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
auto tryMapList(const Dictionary& dictionary, std::string_view key, F&& transform)
{
    return detail::outcomeOf([&] { return mapList<T>(dictionary, key, transform); });
}

/// The outcome of `mapOptionalList`. Where the transform could throw anything, the failure is any error.
template <detail::JSONRequestable T, detail::JSONTransform<T> F>
auto tryMapOptionalList(const Dictionary& dictionary, std::string_view key, F&& transform)
{
    return detail::outcomeOf([&] { return mapOptionalList<T>(dictionary, key, transform); });
}

} // namespace orrenby
