#pragma once

/// @file
/// A JSON object of whatever members among typed values.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Standard/JSON/Dictionary+JSON.hpp"
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class Decoder;
class Encoder;

/// A JSON object whose members are known only to those who ask for them.
///
/// Its members are of the kinds that `AnyJSONValue` lists. It can be made of any dictionary, and does not
/// look at the members until it is encoded. A key that is written twice keeps the later value.
///
/// The accessors are those of `Standard/JSON/Dictionary+JSON.hpp`, with their rules and errors, on `value()`.
/// Those that begin with `try` give the outcome and throw nothing.
///
/// @snippet Tests/Utilities/JSON/JSONObjectTests.cpp Asking an object
///
/// A plain value, equal whatever the order of the members is. Include the coders to use them. Not
/// synchronised.
class ORRENBY_EXPORT JSONObject {
public:
    JSONObject() = default;

    /// Keeps the members as they are; what JSON cannot hold fails when it is encoded.
    explicit JSONObject(Dictionary value)
        : m_value(std::move(value))
    {}

    /// Of members with one key the first gives the place, the last the value.
    JSONObject(std::initializer_list<Dictionary::Entry> members)
        : m_value(members)
    {}

    /// Throws `DecodingError::dataCorrupted` for everything but an object, and for an object with a member
    /// that `AnyJSONValue` refuses. The path is that of the object, the position in the text that of the
    /// culprit. Linear.
    static JSONObject init(const Decoder& decoder);

    /// Throws as `AnyJSONValue::encode` does.
    void encode(const Encoder& encoder) const;

    /// The members in their order.
    const Dictionary& value() const noexcept { return m_value; }

    /// All members, when every one is a `T`; else nothing.
    template <detail::JSONRequestable T> std::optional<std::map<std::string, T>> toDictionary() const
    {
        std::map<std::string, T> result;
        for (const auto& [key, member] : m_value) {
            auto value = member.template cast<T>();
            if (!value)
                return std::nullopt;
            result.emplace(key, *std::move(value));
        }
        return result;
    }

    /// The operations of the same names on `Dictionary`, with the same failures.
    template <detail::JSONRequestable T> T get(std::string_view key) const
    {
        return orrenby::get<T>(m_value, key);
    }
    template <detail::JSONRequestable T> std::optional<T> getOptional(std::string_view key) const
    {
        return orrenby::getOptional<T>(m_value, key);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto map(std::string_view key, F&& transform) const
    {
        return orrenby::map<T>(m_value, key, transform);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto mapOptional(std::string_view key, F&& transform) const
    {
        return orrenby::mapOptional<T>(m_value, key, transform);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto mapList(std::string_view key, F&& transform) const
    {
        return orrenby::mapList<T>(m_value, key, transform);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto mapOptionalList(std::string_view key, F&& transform) const
    {
        return orrenby::mapOptionalList<T>(m_value, key, transform);
    }

    /// The same as outcomes, which throw nothing.
    template <detail::JSONRequestable T> auto tryGet(std::string_view key) const
    {
        return orrenby::tryGet<T>(m_value, key);
    }
    template <detail::JSONRequestable T> auto tryGetOptional(std::string_view key) const
    {
        return orrenby::tryGetOptional<T>(m_value, key);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto tryMap(std::string_view key, F&& transform) const
    {
        return orrenby::tryMap<T>(m_value, key, transform);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto tryMapOptional(std::string_view key, F&& transform) const
    {
        return orrenby::tryMapOptional<T>(m_value, key, transform);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto tryMapList(std::string_view key, F&& transform) const
    {
        return orrenby::tryMapList<T>(m_value, key, transform);
    }
    template <detail::JSONRequestable T, detail::JSONTransform<T> F>
    auto tryMapOptionalList(std::string_view key, F&& transform) const
    {
        return orrenby::tryMapOptionalList<T>(m_value, key, transform);
    }

    /// `["a": 1, "b": "two"]`, keys sorted.
    std::string description() const { return m_value.description(); }
    std::string debugDescription() const { return "JSONObject(" + m_value.debugDescription() + ")"; }
    std::size_t hash() const { return m_value.hash(); }

    friend bool operator==(const JSONObject&, const JSONObject&) = default;

private:
    Dictionary m_value;
};

} // namespace orrenby

template <> struct std::hash<orrenby::JSONObject> {
    std::size_t operator()(const orrenby::JSONObject& object) const { return object.hash(); }
};
