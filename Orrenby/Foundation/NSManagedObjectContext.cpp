#include "Orrenby/Foundation/NSManagedObjectContext.hpp"

#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Store/StoreOutcome.hpp"
#include <exception>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace {

NSManagedObjectContext& required(const Ref<NSManagedObjectContext>& context)
{
    if (context == nullptr)
        fatalError("Empty reference in place of a context", "Foundation/NSManagedObjectContext");
    return *context;
}

void runOptional(UniqueFunction<void(const Ref<NSManagedObjectContext>&)>& function,
    const Ref<NSManagedObjectContext>& context) noexcept
{
    if (function)
        function(context);
}

/// Gives what was thrown.
std::exception_ptr runCommit(const Ref<NSManagedObjectContext>& context, CommitOptions options,
    UniqueFunction<void(const Ref<NSManagedObjectContext>&)> transaction)
{
    const auto held = context; // what runs may empty the reference that was passed
    std::exception_ptr kept;
    required(held).performAndWait([&] {
        runOptional(options.prepare, held);
        try {
            transaction(held);
            if (held->hasChanges())
                held->save();
        } catch (...) {
            kept = std::current_exception();
        }
        runOptional(options.cleanup, held);
    });
    return kept;
}

} // namespace

namespace detail {

bool isContextValid(const Ref<NSManagedObjectContext>& context)
{
    return required(context).userInfo().cast<bool>(managedObjectContextIsValidKey).value_or(false);
}

void saveContextChanges(const Ref<NSManagedObjectContext>& context)
{
    if (isContextValid(context) && context->hasChanges())
        context->save();
}

Result<Void, StoreError> trySaveContextChanges(const Ref<NSManagedObjectContext>& context)
{
    return storeOutcome([&] { saveContextChanges(context); });
}

} // namespace detail

void setIsValid(const Ref<NSManagedObjectContext>& context, bool valid)
{
    required(context).userInfo().set(managedObjectContextIsValidKey, valid);
}

void set(const Ref<NSManagedObjectContext>& context, const ContextValidity& validity)
{
    setIsValid(context, validity.valid);
    const auto& parent = context->parent();
    if (validity.withParent && parent)
        parent->performAndWait([&] { setIsValid(parent, validity.valid); });
}

void commit(const Ref<NSManagedObjectContext>& context, CommitOptions options,
    UniqueFunction<void(const Ref<NSManagedObjectContext>&)> transaction)
{
    if (const auto error = runCommit(context, std::move(options), std::move(transaction)))
        std::rethrow_exception(error);
}

Result<Void, AnyError> tryCommit(const Ref<NSManagedObjectContext>& context, CommitOptions options,
    UniqueFunction<void(const Ref<NSManagedObjectContext>&)> transaction)
{
    if (const auto error = runCommit(context, std::move(options), std::move(transaction)))
        return Result<Void, AnyError>::failure(AnyError(error));
    return Result<Void, AnyError>::success();
}

} // namespace orrenby
