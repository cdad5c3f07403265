#pragma once

/// @file
/// How a stretch of text looks and what it means: dictionaries with typed keys.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

class Font;
class URL;
struct Color;
struct NSTextAttachment;

/// The name of an attribute, and the type of its values: what is no `T` does not compile.
///
/// `inline constexpr TextAttributeKey<std::int64_t> footnote{"footnote"};` is a key of one's own; with the
/// type `Any` its values are of any kind. Two keys of one name are one key: choose names that nobody else
/// has.
///
/// A constant; the name is a literal. Safe to use from several threads.
template <class T> class TextAttributeKey {
public:
    /// What the attribute holds.
    using Value = T;

    /// Keeps the view: a literal, or what else lives as long as the key.
    constexpr explicit TextAttributeKey(std::string_view name) noexcept
        : m_name(name)
    {}

    /// What tells it from other keys.
    constexpr std::string_view name() const noexcept { return m_name; }

private:
    std::string_view m_name;
};

/// The attributes that everything which shows text knows.
struct TextAttribute {
    static constexpr TextAttributeKey<Color> foregroundColor{"foregroundColor"}; ///< Of the letters.
    static constexpr TextAttributeKey<Color> backgroundColor{"backgroundColor"}; ///< Behind the letters.
    /// Its size counts where the place of drawing has sizes.
    static constexpr TextAttributeKey<Font> font{"font"};
    static constexpr TextAttributeKey<URL> link{"link"};                    ///< Where the text leads.
    static constexpr TextAttributeKey<bool> underline{"underline"};         ///< A line below the letters.
    static constexpr TextAttributeKey<bool> strikethrough{"strikethrough"}; ///< A line through the letters.
    /// Of the character U+FFFC; of all others it means nothing.
    static constexpr TextAttributeKey<NSTextAttachment> attachment{"attachment"};
};

/// The attributes of a stretch of text, by key.
///
/// Equality ignores the order in which they came. Null as a value is kept like any other.
///
/// @snippet Tests/Platform/Text/TextAttributesTests.cpp Describing how a text looks
///
/// A value of two words; copies share what they hold, and whatever changes one makes it a copy of its own.
/// Each operation is linear in the few attributes there are. Not synchronised, but copies may live in several
/// threads.
class ORRENBY_EXPORT TextAttributes {
public:
    static constexpr std::string_view printedTypeName = "TextAttributes";

    /// A key with its value.
    struct Entry {
        /// A value of the key's type.
        template <class T>
        Entry(const TextAttributeKey<T>& key, std::type_identity_t<T> newValue)
            : name(key.name())
            , value(std::move(newValue))
        {}
        /// A text is no boolean, although its address would pass for one.
        Entry(const TextAttributeKey<bool>& key, const void* address) = delete;

        std::string_view name; ///< Of the key.
        Any value;             ///< Of the key's type.
    };

    TextAttributes() = default;
    /// `{{TextAttribute::underline, true}, {TextAttribute::foregroundColor, Color::black()}}`; the last of
    /// several values for one key holds.
    TextAttributes(std::initializer_list<Entry> entries);

    /// The value, or nothing when there is none, or one of another type under the same name.
    template <class T> std::optional<T> get(const TextAttributeKey<T>& key) const
    {
        const Any* value = find(key.name());
        return value != nullptr ? value->template cast<T>() : std::nullopt;
    }

    /// Whether there is a value of any type.
    template <class T> bool contains(const TextAttributeKey<T>& key) const
    {
        return find(key.name()) != nullptr;
    }

    /// The value under a name of which the type is not known, or `nullptr`. Valid until the attributes
    /// change.
    const Any* find(std::string_view name) const;

    /// Replaces the value, or adds one.
    template <class T> void set(const TextAttributeKey<T>& key, std::type_identity_t<T> value)
    {
        setAny(key.name(), Any(std::move(value)));
    }
    void set(const TextAttributeKey<bool>& key, const void* address) = delete;

    /// Whether there was one.
    template <class T> bool erase(const TextAttributeKey<T>& key) { return eraseAny(key.name()); }

    /// Changed copies.
    template <class T>
    [[nodiscard]] TextAttributes setting(const TextAttributeKey<T>& key, std::type_identity_t<T> value) const
    {
        auto result = *this;
        result.set(key, std::move(value));
        return result;
    }
    template <class T> [[nodiscard]] TextAttributes removing(const TextAttributeKey<T>& key) const
    {
        auto result = *this;
        result.erase(key);
        return result;
    }
    /// These and the others; where both have a key, the other's value holds.
    [[nodiscard]] TextAttributes merging(const TextAttributes& others) const;

    std::size_t size() const noexcept { return m_values ? m_values->size() : 0; }
    bool empty() const noexcept { return size() == 0; }

    /// All of them by name, in the order in which they came.
    const Dictionary& values() const noexcept;

    /// `["font": Font(System 17.0), "underline": true]`
    std::string description() const { return values().description(); }
    std::string debugDescription() const { return description(); }
    std::size_t hash() const { return values().hash(); }

    ORRENBY_EXPORT friend bool operator==(const TextAttributes& first, const TextAttributes& second);

private:
    void setAny(std::string_view name, Any value);
    bool eraseAny(std::string_view name);

    std::shared_ptr<const Dictionary> m_values; ///< Maybe none when empty.
};

} // namespace orrenby

template <> struct std::hash<orrenby::TextAttributes> {
    std::size_t operator()(const orrenby::TextAttributes& attributes) const { return attributes.hash(); }
};
