#include "Terminal/Terminal.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <unistd.h>

namespace fieldbook {

namespace {

bool isColourWelcome(int descriptor)
{
    const char* refusal = std::getenv("NO_COLOR");
    return ::isatty(descriptor) == 1 && (refusal == nullptr || *refusal == '\0');
}

std::string_view codeOf(Style style)
{
    switch (style) {
    case Style::plain:
        return "0";
    case Style::faint:
        return "2";
    case Style::bold:
        return "1";
    case Style::underlined:
        return "4";
    case Style::red:
        return "31";
    case Style::yellow:
        return "33";
    case Style::green:
        return "32";
    case Style::cyan:
        return "36";
    }
    return "0";
}

} // namespace

Terminal::Terminal(int descriptor)
    : Terminal(descriptor, isColourWelcome(descriptor))
{}

Terminal::Terminal(int descriptor, bool isColoured)
    : m_descriptor(descriptor)
    , m_isInteractive(::isatty(descriptor) == 1)
    , m_isColoured(isColoured)
{}

std::string Terminal::styled(Style style, std::string_view text) const
{
    if (!m_isColoured || style == Style::plain)
        return std::string(text);
    return "\x1B[" + std::string(codeOf(style)) + "m" + std::string(text) + "\x1B[0m";
}

void Terminal::print(std::string text)
{
    text += '\n';
    for (std::size_t written = 0; written < text.size();) {
        const auto length = ::write(m_descriptor, text.data() + written, text.size() - written);
        if (length >= 0)
            written += static_cast<std::size_t>(length);
        else if (errno != EINTR) {
            m_isIntact = false;
            return;
        }
    }
}

} // namespace fieldbook
