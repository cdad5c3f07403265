#pragma once

/// @file
/// What all decoders of one call share. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/CodingStep.hpp"
#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Coding/JSONDecodingStrategies.hpp"
#include "Orrenby/Platform/Coding/JSONDocument.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include "Orrenby/Platform/Objects/Owned.hpp"
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The settings of a decoder.
struct JSONDecodingOptions {
    JSONDateDecodingStrategy dates = JSONDateDecodingStrategy::deferredToDate();
    JSONDataDecodingStrategy data = JSONDataDecodingStrategy::base64();
    JSONKeyDecodingStrategy keys = JSONKeyDecodingStrategy::useDefaultKeys();
    JSONNonConformingFloatStrategy floats = JSONNonConformingFloatStrategy::throw_();
    Dictionary userInfo = {};
};

/// One call of a decoder: the document, the settings, and the path steps that outlive a stack frame.
///
/// Not synchronised.
class ORRENBY_EXPORT DecodingSession {
public:
    /// The settings have to live as long. Throws `DecodingError` for bytes that are no JSON.
    DecodingSession(std::span<const std::byte> data, const JSONDecodingOptions& options);
    DecodingSession(const DecodingSession&) = delete;
    DecodingSession& operator=(const DecodingSession&) = delete;
    ~DecodingSession();

    const JSONDocument& document() const noexcept { return m_document; }
    const JSONDecodingOptions& options() const noexcept { return m_options; }

    /// Of a value's first byte. However many are asked for, the text is counted once.
    TextPosition position(JSONDocument::Node node);

    /// The step, for as long as the session lives.
    const CodingStep* keep(const CodingStep& step);

private:
    struct Extras;

    Extras& extras();

    const JSONDocument m_document;
    const JSONDecodingOptions& m_options;
    Owned<Extras> m_extras;
};

/// A value of the document, and the way to it. `JSONDocument::absent` reads as null.
struct DecodingPlace {
    DecodingSession* session;
    JSONDocument::Node node;
    const CodingStep* path;

    const JSONDocument& document() const noexcept { return session->document(); }
    JSONKind kind() const noexcept
    {
        return node == JSONDocument::absent ? JSONKind::Null : document().kind(node);
    }

    /// What an error about this value says.
    ORRENBY_EXPORT DecodingError::Context context(std::string_view debugDescription) const;

    /// Throws that a value of this type is wanted here: `valueNotFound` for null, else `typeMismatch`.
    [[noreturn]] ORRENBY_EXPORT void throwMismatch(std::string_view typeName) const;
};

/// The members of an object, looked up by key.
class ORRENBY_EXPORT DecodingMembers {
public:
    /// Throws unless the place holds an object.
    explicit DecodingMembers(const DecodingPlace& place);

    const DecodingPlace& place() const noexcept { return m_place; }

    /// The member, or `JSONDocument::absent`. Members asked for in their order are found at once.
    JSONDocument::Node find(std::string_view key) const;

    /// The keys in their order, as types ask for them.
    std::vector<std::string> keys() const;

    [[noreturn]] void throwKeyNotFound(std::string_view key) const;

    /// The member's place, whose path lives as long as the session. An absent one gives null.
    DecodingPlace keptPlace(std::string_view key) const;

private:
    struct ConvertedKeys;

    JSONDocument::Node findConverted(std::string_view key) const;

    DecodingPlace m_place;
    mutable JSONDocument::Node m_cursor;
    JSONDocument::Node m_end = 0;
    std::shared_ptr<const ConvertedKeys> m_convertedKeys; ///< None where keys stay as they are.
};

} // namespace orrenby::inline ORRENBY_ABI::detail
