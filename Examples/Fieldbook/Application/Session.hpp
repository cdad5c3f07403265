#pragma once

/// @file
/// What the parts of one run share.

#include "Application/EventLoop.hpp"
#include "Application/LifeTrace.hpp"
#include "Feed/Catalogue.hpp"
#include "Feed/Tally.hpp"
#include "Orrenby/Platform/Net/URL.hpp"
#include "Orrenby/Utilities/EmailAddress.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Orrenby/Utilities/Streams/PassthroughSubject.hpp"
#include "Settings/Settings.hpp"
#include "Store/StoreFile.hpp"
#include "Terminal/Terminal.hpp"
#include "Upload/Transport.hpp"
#include "Upload/UploadProgress.hpp"
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace fieldbook {

class RemoteService;

/// What a run is for.
enum class Course {
    watch, ///< Follow the folder until somebody ends it.
    look,  ///< Show what is in the folder, then end.
    script ///< Play the bundled script in the folder, then end.
};

/// How a run ended.
enum class Ending { none, byItself, interrupted, folderLost };

/// Outlives the tree: what the tree found out is read here when it is gone.
struct Session {
    EventLoop& loop;
    Terminal& terminal;
    LifeTrace& trace;
    std::filesystem::path folder;
    Course course;
    std::optional<std::string> link{};              ///< To be followed as soon as everything is told.
    std::optional<std::filesystem::path> station{}; ///< The file with the station's answer.
    std::optional<orrenby::EmailAddress> user{};    ///< Who is signed in.
    std::optional<orrenby::URL> service{};          ///< Nothing for one of its own.
    orrenby::Streams::CurrentValueSubject<Tally, orrenby::Never> tally{Tally()};
    orrenby::Streams::CurrentValueSubject<Ending, orrenby::Never> ending{Ending::none};
    /// What the user typed, or the script in his place.
    orrenby::Streams::PassthroughSubject<std::string, orrenby::Never> commands{};
    orrenby::Ref<Settings> settings = std::make_shared<Settings>();
    Catalogue catalogue{};
    UploadCount uploads{};
    int openedCount = 0;
    std::map<std::string, int> screens{}; ///< How often each was shown.
    /// Seconds of real time that a second of a back-off takes: scripts need not wait.
    double secondLength = 1;
    /// How requests leave; nothing for sockets.
    std::function<std::unique_ptr<Transport>()> makeTransport{};
    /// What those share who ask the service, as long as somebody does.
    std::weak_ptr<RemoteService> remote{};
    bool isGuest = false;         ///< Whether the feed is shown before anybody has signed in.
    bool isUploadWanted = false;  ///< As soon as everything is told.
    bool isRefreshWanted = false; ///< The service's reports, each time that everything is told.
    /// What may outlive the run; one of its own ends with it.
    std::shared_ptr<Memory> memory = StoreFile::inMemory()->memory();
    /// Whether the next run will find it.
    bool isMemoryKept = false;
    /// The reports that were there when the last run ended, by file, until they are told.
    std::map<std::string, Report> remembered{};
};

} // namespace fieldbook
