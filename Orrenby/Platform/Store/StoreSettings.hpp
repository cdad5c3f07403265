#pragma once

/// @file
/// How a store file is opened.

#include "Orrenby/Platform/Export.hpp"
#include <cstdint>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

/// When a save counts as kept.
enum class StoreSynchronous : std::uint8_t {
    Full,   ///< When the disk said so: it survives the loss of power.
    Normal, ///< It survives the end of the process; the loss of power may take the latest saves, whole ones.
    Off ///< The operating system decides; the loss of power may damage the file. For what can be made again.
};

/// How a store is opened.
struct StoreSettings {
    /// The file; empty for a store in memory, which ends with its last reference and which nobody else sees.
    std::string path = {};
    StoreSynchronous synchronous = StoreSynchronous::Full; ///< What a save costs, and what it is worth.
    /// An existing file that is only read; saving fails.
    bool isReadOnly = false;
    /// Seconds to wait for others who write. 0 and less do not wait.
    double busyTimeout = 5;
    /// The most pages of 4096 bytes that the file may have; 0 sets no limit. A save that would need more
    /// fails as on a full disk.
    std::int64_t maximumPageCount = 0;
};

} // namespace orrenby
