#pragma once

/// @file
/// Changes in a folder, as the system tells them.

#include "Orrenby/Platform/Objects/Result.hpp"
#include "Terminal/Descriptor.hpp"
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace fieldbook {

/// A hint about a folder, to be followed by a look at it: between the change and the reading of the hint
/// anything may have happened.
struct FolderChange {
    enum class Kind {
        touched,   ///< A file came or was written, and whoever wrote it is done.
        gone,      ///< A name is not there any more.
        overflow,  ///< More happened than the system could note. Look at everything.
        folderGone ///< The folder itself was removed or moved, or its file system unmounted. The last hint.
    };

    Kind kind;
    std::string file; ///< The name within the folder; empty for the last two kinds.
};

/// Listens to the changes in one folder, without its sub-folders.
///
/// A file that is being written is not touched before its writer closes it. A folder that was removed while
/// some program still stands in it is gone only when that program leaves.
///
/// Not synchronised.
class FolderWatch {
public:
    /// Begins to listen. The failure is what the system says, as text.
    static orrenby::Result<std::shared_ptr<FolderWatch>, std::string> open(
        const std::filesystem::path& folder);

    /// Can be read when there are changes.
    int descriptor() const { return m_descriptor.number(); }

    /// The changes since the last call; none if there were none. Does not wait.
    std::vector<FolderChange> read();

private:
    FolderWatch(std::filesystem::path folder, Descriptor descriptor);

    std::filesystem::path m_folder;
    Descriptor m_descriptor;
};

} // namespace fieldbook
