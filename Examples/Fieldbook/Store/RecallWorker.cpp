#include "Store/RecallWorker.hpp"

#include <chrono>
#include <map>
#include <string>

namespace fieldbook {

RecallWorker::RecallWorker(Session& session)
    : m_session(session)
{}

RecallWorker::~RecallWorker() = default;

orrenby::Streams::AnyPublisher<FeedNews, FolderLost> RecallWorker::news() const
{
    return m_news.eraseToAnyPublisher();
}

void RecallWorker::didStart()
{
    m_session.trace.step("RecallWorker starts");
    if (!m_session.remembered.empty())
        m_beginning = m_session.loop.after(std::chrono::milliseconds(0), [this] { tell(); });
}

void RecallWorker::willStop()
{
    m_session.trace.step("RecallWorker stops");
    m_beginning = {};
    // Started again, the folder tells everything anew.
    m_session.remembered.clear();
}

void RecallWorker::tell()
{
    std::map<int, std::string> files;
    for (const auto& [file, report] : m_session.remembered)
        files.emplace(m_session.catalogue.numberOf(file), file);
    m_news.send(FeedNews(Recalled{files.size()}));
    for (const auto& [number, file] : files)
        m_news.send(FeedNews(Remembered{file, m_session.remembered.at(file)}));
}

} // namespace fieldbook
