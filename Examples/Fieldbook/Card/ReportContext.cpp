#include "Card/ReportContext.hpp"

namespace fieldbook {

OpeningWorker::OpeningWorker(Session& session)
    : m_session(session)
{}

OpeningWorker::~OpeningWorker() = default;

void OpeningWorker::didStart() { ++m_session.openedCount; }

ReportContext::ReportContext(Session& session)
    : AbstractContext({}, orrenby::make<OpeningWorker>(session))
{}

ReportContext::~ReportContext() = default;

} // namespace fieldbook
