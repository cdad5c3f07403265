#include "Store/StoreFile.hpp"

#include "Orrenby/Foundation/Hashes.hpp"
#include "Orrenby/Foundation/Outbox/Outbox.hpp"
#include "Store/StoreModel.hpp"
#include "Terminal/Text.hpp"
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <system_error>
#include <utility>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;

/// The value of an environment variable that names a folder. What does not begin at the root names none.
std::optional<fs::path> folderIn(const char* variable)
{
    const auto* const value = std::getenv(variable);
    const auto folder = fs::path(value != nullptr ? value : "");
    return folder.is_absolute() ? std::optional(folder) : std::nullopt;
}

std::string messageOf(int error) { return std::generic_category().message(error); }

/// Opens or makes the file and takes the lock that a run holds; gives why that cannot be.
orrenby::Result<Descriptor, std::string> locked(const fs::path& file)
{
    using Outcome = orrenby::Result<Descriptor, std::string>;
    std::error_code error;
    if (!file.parent_path().empty() && fs::create_directories(file.parent_path(), error))
        fs::permissions(file.parent_path(), fs::perms::owner_all, error);
    constexpr int onlyOurs = 0600;
    auto descriptor = Descriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, onlyOurs));
    if (!descriptor)
        return Outcome::failure(messageOf(errno));
    if (::flock(descriptor.number(), LOCK_EX | LOCK_NB) != 0)
        return Outcome::failure(errno == EWOULDBLOCK ? "another fieldbook uses it" : messageOf(errno));
    return Outcome::success(std::move(descriptor));
}

std::string sentenceAbout(const fs::path& file, const std::string& reason)
{
    return "cannot use the store \"" + printable(file.string()) + "\": " + reason;
}

/// Whether the file has bytes, but not even those that every store begins with. The storage engine takes a
/// file of one byte for an empty one, and would write over it.
bool isCutBeforeItsHead(const fs::path& file)
{
    constexpr std::uintmax_t lengthOfHead = 100;
    std::error_code error;
    const auto size = fs::file_size(file, error);
    return !error && size > 0 && size < lengthOfHead;
}

StoreProblem problemOf(const fs::path& file, const orrenby::StoreError& error)
{
    using Kind = orrenby::StoreError::Kind;
    const bool isOutOfReach = error.kind() != Kind::Corrupt && error.kind() != Kind::SchemaMismatch
        && error.kind() != Kind::MigrationFailed;
    return {isOutOfReach ? StoreProblem::Kind::outOfReach : StoreProblem::Kind::unusable,
        sentenceAbout(file, wordsFor(error))};
}

} // namespace

std::optional<fs::path> defaultStoreFile(const fs::path& folder)
{
    auto state = folderIn("XDG_STATE_HOME");
    if (!state) {
        const auto home = folderIn("HOME");
        if (!home)
            return {};
        state = *home / ".local" / "state";
    }
    std::error_code error;
    auto absolute = fs::weakly_canonical(fs::absolute(folder, error), error);
    if (!absolute.has_filename()) // a slash at the end
        absolute = absolute.parent_path();
    const auto digits = orrenby::sha1Hash(absolute.string()).value_or("").substr(0, 8);
    return *state / "fieldbook" / (absolute.filename().string() + '-' + digits + ".store");
}

StoreFile::Outcome StoreFile::open(const fs::path& file)
{
    auto lock = locked(file);
    if (const auto problem = lock.error())
        return Outcome::failure({StoreProblem::Kind::outOfReach, sentenceAbout(file, *problem)});
    if (isCutBeforeItsHead(file))
        return Outcome::failure(problemOf(file, {orrenby::StoreError::Kind::Corrupt, {}}));
    const auto settings = orrenby::StoreSettings{.path = file.string()};
    try {
        orrenby::migrateStore(storeMigration(), settings);
        return Outcome::success(
            std::unique_ptr<StoreFile>(new StoreFile(std::move(lock).unwrap(), settings)));
    } catch (const orrenby::StoreError& error) {
        return Outcome::failure(problemOf(file, error));
    }
}

std::unique_ptr<StoreFile> StoreFile::inMemory()
{
    return std::unique_ptr<StoreFile>(new StoreFile(Descriptor(), {}));
}

StoreFile::StoreFile(Descriptor lock, const orrenby::StoreSettings& settings)
    : m_lock(std::move(lock))
    , m_memory(std::make_shared<Memory>(orrenby::make<orrenby::NSManagedObjectContext>(
          orrenby::PersistentStore::open(storeModel(), settings))))
{
    // Damage shows before anything is done, and not in the middle of it.
    orrenby::Outbox(m_memory->context()).counts();
}

std::string wordsFor(const orrenby::StoreError& error)
{
    using Kind = orrenby::StoreError::Kind;
    switch (error.kind()) {
    case Kind::Corrupt:
        return "it is damaged, or no store";
    case Kind::SchemaMismatch:
    case Kind::MigrationFailed:
        return "it belongs to another program, or to a later version of this one";
    case Kind::ReadOnly:
        return "it cannot be written";
    case Kind::DiskFull:
        return "there is no room left";
    case Kind::Busy:
        return "somebody else keeps writing into it";
    default:
        return printable(error.message());
    }
}

} // namespace fieldbook
