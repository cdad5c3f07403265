#include "Terminal/CommandWorker.hpp"

#include "Terminal/Text.hpp"
#include <array>
#include <unistd.h>
#include <utility>

namespace fieldbook {

CommandWorker::CommandWorker(Session& session, int descriptor)
    : m_session(session)
    , m_descriptor(descriptor)
{}

CommandWorker::~CommandWorker() = default;

void CommandWorker::didStart()
{
    m_session.trace.step("CommandWorker starts");
    m_watch = m_session.loop.watch(m_descriptor, [this] { receive(); });
}

void CommandWorker::willStop()
{
    m_session.trace.step("CommandWorker stops");
    m_watch = {};
    m_line.clear();
}

void CommandWorker::receive()
{
    std::array<char, 256> bytes{};
    const auto length = ::read(m_descriptor, bytes.data(), bytes.size());
    if (length <= 0) {
        m_watch = {};
        return;
    }
    for (const auto byte : std::string_view(bytes.data(), static_cast<std::size_t>(length))) {
        if (byte != '\n') {
            if (m_line.size() < longestLine)
                m_line += byte;
            continue;
        }
        const auto line = std::exchange(m_line, {});
        if (const auto command = trimmed(line); !command.empty())
            m_session.commands.send(std::string(command));
    }
}

} // namespace fieldbook
