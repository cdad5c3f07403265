#pragma once

/// @file
/// Why a store could not do what it was asked for.

#include "Orrenby/Platform/Errors/CustomNSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectID.hpp"
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

/// A failure of a store, its model or its objects: which kind, and the words for it.
///
/// Whatever was not saved is still in its context, and the file holds what it held before.
///
/// As a platform error object it has the domain `StoreError`, the kind as its code, and the description as
/// its localised description.
///
/// @snippet Tests/Platform/Store/StoreErrorTests.cpp Reading a store error
///
/// A handle: copies share one immutable content. Safe to use from several threads.
class ORRENBY_EXPORT StoreError final : public CustomNSError<StoreError> {
public:
    /// What went wrong. The number of a kind is its code.
    enum class Kind : std::uint8_t {
        Other,            ///< What has no kind of its own, memory that ran out included.
        CannotOpen,       ///< The file is missing, a folder, or not ours to open.
        ReadOnly,         ///< The file or its folder cannot be written.
        DiskFull,         ///< There is no room left.
        InputOutput,      ///< The disk or the file system failed.
        Busy,             ///< Somebody else kept writing for longer than the busy timeout.
        Corrupt,          ///< The file is damaged, or no store.
        Constraint,       ///< Something still refers to what was deleted.
        SchemaMismatch,   ///< The file was made for another model, or by other migration steps.
        InvalidModel,     ///< The model contradicts itself.
        InvalidPredicate, ///< The text is no predicate, or does not fit the entity.
        InvalidValue,     ///< A value is missing, or cannot be stored.
        DeleteDenied,     ///< Something else is in the way of a deletion, by a rule of the model.
        Conflict,         ///< Somebody else saved the same objects first.
        ObjectGone,       ///< The object is no longer in the store.
        MigrationFailed,  ///< A step of a migration is missing or failed, or left another schema than
                          ///< promised.
    };

    /// What is known of it.
    struct Context {
        std::string message = {}; ///< In English, for developers; often the words of the storage engine.
        /// The extended result code of the storage engine; 0 where it was not involved.
        int resultCode = 0;
        /// The objects that are concerned, as far as they are known.
        std::vector<NSManagedObjectID> objectIDs = {};
        /// The attribute or relationship that is concerned; often empty.
        std::string key = {};
        /// The byte of a predicate's text at which it is wrong, counted from 0.
        std::optional<std::size_t> position = {};
    };

    /// What is not known may be left out of the context.
    StoreError(Kind kind, Context context);

    /// What went wrong.
    Kind kind() const noexcept;

    /// Shared with the copies of this error; lives as long as one of them.
    const Context& context() const noexcept;

    /// The words of the context.
    const std::string& message() const noexcept { return context().message; }

    /// `DiskFull: database or disk is full`
    std::string description() const override;

    std::int64_t errorCode() const { return static_cast<std::int64_t>(kind()); }
    Dictionary errorUserInfo() const;

private:
    struct Content;
    std::shared_ptr<const Content> m_content;
};

} // namespace orrenby
