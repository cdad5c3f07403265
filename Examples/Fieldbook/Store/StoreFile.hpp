#pragma once

/// @file
/// The file of the application's store.

#include "Orrenby/Platform/Objects/Result.hpp"
#include "Store/Memory.hpp"
#include "Terminal/Descriptor.hpp"
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace fieldbook {

/// Where the store of a folder is unless the user names a file: in `$XDG_STATE_HOME/fieldbook`, or in
/// `~/.local/state/fieldbook`, under the folder's name and eight digits that tell it from other folders of
/// that name. Nothing without both variables.
std::optional<std::filesystem::path> defaultStoreFile(const std::filesystem::path& folder);

/// Why there is no store.
struct StoreProblem {
    enum class Kind {
        outOfReach, ///< Another run has it open, or it is not ours to make, open or write.
        unusable    ///< It is damaged, no store of this program, or of a later version.
    };

    Kind kind;
    std::string text; ///< One line that names the file.
};

/// A store that is open and was read, in a file that no other fieldbook has open, or in memory.
///
/// Use from the main thread.
class StoreFile {
public:
    using Outcome = orrenby::Result<std::unique_ptr<StoreFile>, StoreProblem>;

    /// Opens the file, or makes it with its folder, readable for nobody else, and reads it; a file of an
    /// earlier version is brought to the present one.
    /// Where that fails the file is what it was before.
    static Outcome open(const std::filesystem::path& file);

    /// A store that ends with its owner.
    static std::unique_ptr<StoreFile> inMemory();

    /// What it holds.
    const std::shared_ptr<Memory>& memory() const { return m_memory; }

    /// Whether it ends with its owner.
    bool isInMemory() const { return !m_lock; }

private:
    StoreFile(Descriptor lock, const orrenby::StoreSettings& settings);

    // Closed last. To close it earlier would end the locks that the store holds on the same file.
    Descriptor m_lock;
    std::shared_ptr<Memory> m_memory;
};

/// What went wrong in a store, as the end of a sentence.
std::string wordsFor(const orrenby::StoreError& error);

} // namespace fieldbook
