#include "Folder/FolderWorker.hpp"

#include "Folder/ReportFolder.hpp"
#include "Orrenby/Utilities/Log/Entries.hpp"
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace fieldbook {

FolderWorker::FolderWorker(Session& session)
    : m_session(session)
    , m_news(FeedNews(Opened{session.folder.string()}))
{}

FolderWorker::~FolderWorker() = default;

orrenby::Streams::AnyPublisher<FeedNews, FolderLost> FolderWorker::news() const
{
    return m_news.eraseToAnyPublisher();
}

void FolderWorker::didStart()
{
    m_session.trace.step("FolderWorker starts");
    m_firstLook = m_session.loop.after(std::chrono::milliseconds(0), [this] { begin(); });
}

void FolderWorker::willStop()
{
    m_session.trace.step("FolderWorker stops");
    m_firstLook = {};
    m_changes = {};
    m_watch = nullptr;
    m_known.clear();
}

void FolderWorker::begin()
{
    // Listening comes before looking, so that no change falls between the two.
    const auto watch = FolderWatch::open(m_session.folder);
    if (watch.isFailure())
        return lose(*watch.error());
    m_watch = watch.unwrap();
    m_changes = m_session.loop.watch(m_watch->descriptor(), [this] { follow(); });
    remember();
    if (lookAtAll())
        m_news.send(FeedNews(Scanned{m_known.size()}));
}

/// What is remembered of the folder was told already.
void FolderWorker::remember()
{
    for (const auto& [file, report] : m_session.remembered)
        if (isReportName(file) && file.find('/') == std::string::npos)
            m_known.insert_or_assign(file, Known::success(report));
}

void FolderWorker::follow()
{
    for (const auto& change : m_watch->read()) {
        // Whoever receives news may end the worker.
        if (!m_watch)
            return;
        handle(change);
    }
}

void FolderWorker::handle(const FolderChange& change)
{
    switch (change.kind) {
    case FolderChange::Kind::touched:
        if (isReportName(change.file))
            lookAt(change.file);
        break;
    case FolderChange::Kind::gone:
        // If it is there again, it was written anew, and the hint for that is on its way.
        if (std::error_code error; !std::filesystem::is_regular_file(m_session.folder / change.file, error))
            forget(change.file);
        break;
    case FolderChange::Kind::overflow:
        orrenby::Log::info("too many changes at once: looking at the whole folder again");
        lookAtAll();
        break;
    case FolderChange::Kind::folderGone:
        lose("it was removed or moved");
        break;
    }
}

/// Gives whether the worker still follows the folder afterwards.
bool FolderWorker::lookAtAll()
{
    const auto files = listReports(m_session.folder);
    if (!files) {
        lose("it cannot be listed");
        return false;
    }
    forgetAllBut(*files);
    for (const auto& file : *files)
        if (m_watch)
            lookAt(file);
    return m_watch != nullptr;
}

void FolderWorker::lookAt(const std::string& file)
{
    const auto content = readReport(m_session.folder / file);
    if (!content)
        forget(file);
    else if (const auto problem = content->error())
        refuse(file, *problem);
    else
        take(file, content->unwrap());
}

void FolderWorker::take(const std::string& file, Report report)
{
    const auto known = m_known.find(file);
    const auto before = known != m_known.end() ? known->second.value() : std::nullopt;
    if (before == report)
        return;
    m_known.insert_or_assign(file, Known::success(report));
    if (before)
        m_news.send(FeedNews(Changed{file, std::move(report)}));
    else
        m_news.send(FeedNews(Added{file, std::move(report)}));
}

void FolderWorker::refuse(const std::string& file, std::string problem)
{
    const auto known = m_known.find(file);
    if (known != m_known.end() && known->second.error() == problem)
        return;
    m_known.insert_or_assign(file, Known::failure(problem));
    orrenby::Log::warning([&] { return file + ": " + problem; });
    m_news.send(FeedNews(Unreadable{file, std::move(problem)}));
}

void FolderWorker::forget(const std::string& file)
{
    if (const auto known = m_known.extract(file))
        m_news.send(FeedNews(Removed{file, known.mapped().value()}));
}

/// @param files  Sorted.
void FolderWorker::forgetAllBut(const std::vector<std::string>& files)
{
    std::vector<std::string> gone;
    for (const auto& [file, content] : m_known)
        if (!std::binary_search(files.begin(), files.end(), file))
            gone.push_back(file);
    for (const auto& file : gone)
        forget(file);
}

void FolderWorker::lose(std::string reason)
{
    m_changes = {};
    m_watch = nullptr;
    orrenby::Log::error([&] { return "the folder is lost: " + reason; });
    m_news.send(FolderLost{std::move(reason)});
}

} // namespace fieldbook
