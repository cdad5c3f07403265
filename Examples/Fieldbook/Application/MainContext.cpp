#include "Application/MainContext.hpp"

namespace fieldbook {

MainContext::MainContext(Session& session)
    : AbstractContext({}, orrenby::make<UploadWorker>(session))
    , m_session(session)
{}

MainContext::~MainContext() { m_session.trace.step("MainContext goes"); }

void MainContext::didBecomeActive() { m_session.trace.step("MainContext is active"); }

void MainContext::willResignActive() { m_session.trace.step("MainContext resigns"); }

} // namespace fieldbook
