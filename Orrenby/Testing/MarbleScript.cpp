#include "Orrenby/Testing/MarbleScript.hpp"

#include "Orrenby/Platform/Objects/Describe.hpp"
#include <utility>

namespace orrenby::inline ORRENBY_ABI::testing {

namespace {

bool isSymbol(char character)
{
    // Not by the C library: its answer depends on the locale.
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z')
        || (character >= '0' && character <= '9') || character == '#';
}

/// Reads a line from left to right.
class Reader {
public:
    explicit Reader(std::string_view notation)
        : m_notation(notation)
    {}

    void read()
    {
        for (; m_position < m_notation.size(); ++m_position)
            read(m_notation[m_position]);
        if (m_isInGroup)
            fail(m_groupStart, "this group has no end");
    }

    std::vector<MarbleEvent> takeEvents() { return std::move(m_events); }
    int frame() const { return m_frame; }

private:
    void read(char character)
    {
        if (character == ' ')
            return;
        if (m_hasEnded && character != ')')
            fail("nothing can come after the end");
        if (character == '-')
            readPause();
        else if (character == '(')
            beginGroup();
        else if (character == ')')
            endGroup();
        else if (character == '|' || isSymbol(character))
            readEvent(character);
        else
            fail("this character has no meaning");
    }

    void readPause()
    {
        if (m_isInGroup)
            fail("no time passes within a group");
        ++m_frame;
    }

    void readEvent(char character)
    {
        m_events.push_back({m_frame, character, m_position});
        m_hasEnded = character == '|';
        if (!m_isInGroup)
            ++m_frame;
    }

    void beginGroup()
    {
        if (m_isInGroup)
            fail("a group holds no groups");
        m_isInGroup = true;
        m_groupStart = m_position;
    }

    void endGroup()
    {
        if (!m_isInGroup)
            fail("no group begins before this");
        if (m_events.empty() || m_events.back().frame != m_frame)
            fail("this group is empty");
        m_isInGroup = false;
        ++m_frame;
    }

    [[noreturn]] void fail(std::string_view message) const { fail(m_position, message); }
    [[noreturn]] void fail(std::size_t position, std::string_view message) const
    {
        throw MarbleError(m_notation, position, message);
    }

    const std::string_view m_notation;
    std::size_t m_position = 0;
    std::size_t m_groupStart = 0;
    std::vector<MarbleEvent> m_events;
    int m_frame = 0;
    bool m_isInGroup = false;
    bool m_hasEnded = false;
};

std::string shortestNotation(const std::vector<MarbleEvent>& events)
{
    std::string text;
    int frame = 0;
    for (std::size_t index = 0; index < events.size(); ++frame) {
        auto next = index;
        while (next < events.size() && events[next].frame <= frame)
            ++next;
        if (next == index)
            text += '-';
        else if (next == index + 1)
            text += events[index].symbol;
        else {
            text += '(';
            for (; index < next; ++index)
                text += events[index].symbol;
            text += ')';
        }
        index = next;
    }
    return text;
}

} // namespace

MarbleError::MarbleError(std::string_view notation, std::size_t position, std::string_view message)
    : m_text("Marbles \"" + std::string(notation) + "\", position " + describe(position) + ": "
        + std::string(message))
    , m_position(position)
{}

MarbleError::~MarbleError() = default;

MarbleScript::MarbleScript(std::string_view notation)
    : m_notation(notation)
{
    auto reader = Reader(notation);
    reader.read();
    m_events = reader.takeEvents();
    m_frameCount = reader.frame();
}

MarbleScript::MarbleScript(std::vector<MarbleEvent> events)
    : m_notation(shortestNotation(events))
    , m_events(std::move(events))
    , m_frameCount(m_events.empty() ? 0 : m_events.back().frame + 1)
{}

} // namespace orrenby::testing
