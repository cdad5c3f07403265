// Whatever bytes the texts of an event hold, its line is one valid JSON object of valid UTF-8.

#include "Fuzz/Support/FuzzedLogEvent.hpp"
#include "Fuzz/Support/RequireThat.hpp"
#include "Fuzz/Support/WellFormed.hpp"
#include "Orrenby/Utilities/Log/JSONLinesHandler.hpp"

using namespace orrenby;

namespace {

/// Checks the grammar and nothing else; knows nothing of how the lines are written.
class JSONChecker {
public:
    explicit JSONChecker(std::string_view text)
        : m_text(text)
    {}

    bool isObject() { return next() == '{' && value() && m_position == m_text.size(); }

private:
    char next() const { return m_position < m_text.size() ? m_text[m_position] : '\0'; }

    bool take(std::string_view expected)
    {
        if (!m_text.substr(m_position).starts_with(expected))
            return false;
        m_position += expected.size();
        return true;
    }

    bool value()
    {
        switch (next()) {
        case '{':
            return list('}', true);
        case '[':
            return list(']', false);
        case '"':
            return text();
        case 't':
            return take("true");
        case 'f':
            return take("false");
        case 'n':
            return take("null");
        default:
            return number();
        }
    }

    bool list(char end, bool hasKeys)
    {
        ++m_position;
        if (take(std::string_view(&end, 1)))
            return true;
        do {
            if (hasKeys && !(text() && take(":")))
                return false;
            if (!value())
                return false;
        } while (take(","));
        return take(std::string_view(&end, 1));
    }

    bool text()
    {
        if (!take("\""))
            return false;
        while (m_position < m_text.size()) {
            const char byte = m_text[m_position++];
            if (byte == '"')
                return true;
            if (static_cast<unsigned char>(byte) < 0x20 || (byte == '\\' && !escape()))
                return false;
        }
        return false;
    }

    bool escape()
    {
        constexpr std::string_view letters = "\"\\/bfnrt";
        const char letter = next();
        ++m_position;
        if (letter == 'u') {
            const auto digits = m_text.substr(std::min(m_position, m_text.size()), 4);
            m_position += digits.size();
            return digits.size() == 4
                && digits.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
        }
        return letter != '\0' && letters.find(letter) != std::string_view::npos;
    }

    bool digits()
    {
        const auto start = m_position;
        while (next() >= '0' && next() <= '9')
            ++m_position;
        return m_position > start;
    }

    bool number()
    {
        take("-");
        if (!take("0") && !digits())
            return false;
        if (take(".") && !digits())
            return false;
        if (take("e") || take("E")) {
            if (!take("+"))
                take("-");
            return digits();
        }
        return true;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto bytes = FuzzedBytes(data, size);
    const auto level = *Log::Level::make(bytes.number() % 6);
    const auto line = Log::JSONLinesHandler::line(level, fuzzedLogEvent(bytes), Date(bytes.number() * 0.7));

    requireThat(line.ends_with('\n'));
    const auto content = std::string_view(line).substr(0, line.size() - 1);
    requireThat(isWellFormed(content));
    requireThat(JSONChecker(content).isObject());
    return 0;
}
