#pragma once

/// @file
/// What all encoders of one call share. Not in the umbrella header: part of the coders' own workings.

#include "Orrenby/Platform/Coding/CodingStep.hpp"
#include "Orrenby/Platform/Coding/JSONEncodingStrategies.hpp"
#include "Orrenby/Platform/Coding/JSONOutput.hpp"
#include "Orrenby/Platform/Coding/JSONTextBuffer.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// The settings of an encoder.
struct JSONEncodingOptions {
    JSONDateEncodingStrategy dates = JSONDateEncodingStrategy::deferredToDate();
    JSONDataEncodingStrategy data = JSONDataEncodingStrategy::base64();
    JSONKeyEncodingStrategy keys = JSONKeyEncodingStrategy::useDefaultKeys();
    JSONNonConformingFloatStrategy floats = JSONNonConformingFloatStrategy::throw_();
    JSONOutput output = {};
    Dictionary userInfo = {};
};

/// Text that is being written, and the texts of nested containers that belong into it at earlier places.
struct EncodingText {
    JSONTextBuffer text;
    std::vector<std::pair<std::size_t, EncodingText*>> insertions; ///< By place, ascending.
};

class EncodingSession;

/// Where the next value goes: straight to the end of a text.
struct EncodingPlace {
    EncodingSession* session;
    EncodingText* target;
    const CodingStep* path;
    std::size_t depth; ///< Lists and objects around the value.

    JSONTextBuffer& text() const noexcept { return target->text; }

    /// The same for a value one level deeper.
    EncodingPlace inside(const CodingStep* step) const noexcept { return {session, target, step, depth + 1}; }

    [[noreturn]] ORRENBY_EXPORT void throwInvalid(Any value, std::string message) const;
    /// Opens a list or an object; an error where the nesting becomes deeper than can be read again.
    void open(char bracket) const
    {
        if (depth >= 512)
            throwTooDeep();
        text().append(bracket);
    }

private:
    [[noreturn]] ORRENBY_EXPORT void throwTooDeep() const;
};

/// A value that is being encoded by a type's own `encode`, which may ask for containers more than once and in
/// any order.
///
/// Its values are written at once. A nested container, which may be filled later, gets a text of its own. Not
/// synchronised.
class ORRENBY_EXPORT EncodingSlot {
public:
    enum class Form : std::uint8_t { Nothing, Single, Keyed, Unkeyed };

    explicit EncodingSlot(const EncodingPlace& place) noexcept
        : m_place(place)
    {}
    EncodingSlot(const EncodingSlot&) = delete;
    EncodingSlot& operator=(const EncodingSlot&) = delete;
    ~EncodingSlot() = default;

    const EncodingPlace& place() const noexcept { return m_place; }

    /// Values of a list so far, or members.
    std::size_t count() const noexcept { return m_count; }

    /// Another form than before is a programming error.
    void become(Form form);

    /// The place for a member's value, behind its key. The step has to live as long as the value is written.
    EncodingPlace member(const CodingStep* step);
    /// The place for the next value of a list.
    EncodingPlace element(const CodingStep* step);

    /// Writes a value; one that fails leaves nothing behind.
    template <class Write> void attempt(Write write)
    {
        const Mark mark{m_place.text().size(), m_place.target->insertions.size(), m_count, m_form};
        try {
            write();
        } catch (...) {
            goBack(mark);
            throw;
        }
    }

    /// The end of the value. One that encoded nothing becomes an empty object.
    void close();

private:
    struct Mark {
        std::size_t size;
        std::size_t insertions;
        std::size_t count;
        Form form;
    };

    void goBack(const Mark& mark) noexcept;
    void recordKey(std::string_view key);

    static constexpr std::size_t fewKeys = 8;

    EncodingPlace m_place;
    Form m_form = Form::Nothing;
    std::size_t m_count = 0;
    std::array<std::uint32_t, fewKeys> m_firstKeys = {}; ///< Hashes, to notice a repeated key.
    std::vector<std::uint32_t> m_moreKeys;
};

/// One call of an encoder. Not synchronised.
class ORRENBY_EXPORT EncodingSession {
public:
    /// The settings have to live as long.
    explicit EncodingSession(const JSONEncodingOptions& options);
    EncodingSession(const EncodingSession&) = delete;
    EncodingSession& operator=(const EncodingSession&) = delete;
    ~EncodingSession();

    const JSONEncodingOptions& options() const noexcept { return m_options; }
    EncodingPlace root() noexcept { return {this, &m_text, nullptr, 0}; }

    /// Whether keys stay as the types give them.
    bool keepsKeys() const noexcept
    {
        return m_options.keys.kind() == JSONKeyEncodingStrategy::Kind::UseDefaultKeys;
    }

    /// A slot that lives as long as the session, with a text of its own that belongs to this place.
    EncodingSlot& detach(const EncodingPlace& place);

    /// The step with a key that lives as long as the session.
    const CodingStep* keep(const CodingStep& step);

    void noteRepeatedKey() noexcept { m_mayRepeatKeys = true; }

    /// The complete text, laid out as the settings say. It lives as long as the session.
    const JSONTextBuffer& finished();

private:
    struct Detached;
    struct KeptStep;

    const JSONEncodingOptions& m_options;
    EncodingText m_text;
    JSONTextBuffer m_finished;
    std::vector<std::unique_ptr<Detached>> m_detached;
    std::vector<std::unique_ptr<KeptStep>> m_steps;
    bool m_mayRepeatKeys = false;
};

/// Appends a comma unless this is the first, the key as the settings say, and a colon.
ORRENBY_EXPORT void writeKey(const EncodingPlace& object, bool isFirst, std::string_view key);

} // namespace orrenby::inline ORRENBY_ABI::detail
