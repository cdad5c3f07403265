#pragma once

/// @file
/// What the parts of one run share.

#include "EventLoop.hpp"
#include "LifeTrace.hpp"
#include "Orrenby/Utilities/Streams/CurrentValueSubject.hpp"
#include "Tally.hpp"
#include "Terminal.hpp"
#include <filesystem>

namespace fieldbook {

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
    orrenby::Streams::CurrentValueSubject<Tally, orrenby::Never> tally{Tally()};
    orrenby::Streams::CurrentValueSubject<Ending, orrenby::Never> ending{Ending::none};
};

} // namespace fieldbook
