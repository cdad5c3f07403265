#include "Application/ScreenContext.hpp"

#include <utility>

namespace fieldbook {

ScreenWorker::ScreenWorker(Session& session, std::string screen)
    : m_session(session)
    , m_screen(std::move(screen))
{}

ScreenWorker::~ScreenWorker() = default;

void ScreenWorker::didStart() { ++m_session.screens[m_screen]; }

ScreenContext::ScreenContext(Session& session, std::string screen)
    : AbstractContext({}, orrenby::make<ScreenWorker>(session, std::move(screen)))
{}

ScreenContext::~ScreenContext() = default;

} // namespace fieldbook
