#pragma once

/// @file
/// The result of a fetch as a stream.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Store/NSManagedObjectContext.hpp"
#include "Orrenby/Utilities/Streams/More/Create.hpp"
#include <memory>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// Who receives the results of an observed fetch, or the failure in the place of one.
struct FetchReceiver {
    UniqueFunction<void(std::vector<Ref<NSManagedObject>>)> receiveObjects;
    UniqueFunction<void(const StoreError&)> receiveError;
};

/// @returns What ends the observation. May be called on any thread.
ORRENBY_EXPORT UniqueFunction<void()> observeFetch(
    const Ref<NSManagedObjectContext>& context, NSFetchRequest request, FetchReceiver receiver);

} // namespace detail

/// The objects that a request asks for, now and after each save that changes them.
///
/// @snippet Tests/Foundation/NSManagedObjectContext+ObserveTests.cpp Observing a fetch
///
/// Each subscriber gets the present result before subscribing returns, then one value for each save that
/// changed it: other objects, another order, or a saved change of one of them. Unsaved changes of the context
/// are part of a value, as of every fetch, but bring none by themselves; saving an object that the latest
/// value has already brings none either. A fetch that fails is sent as a failure, and the stream goes on.
/// Objects that are no `T` are left out.
///
/// It sees the saves of the context itself and those that children save into it; those of other contexts of
/// the same store, and of the context's parent, are merged into the context first (see `mergeChanges`). Saves
/// of other processes and through other `PersistentStore`s of the file are not seen.
///
/// Subscribe where the context may be used. Values come there too: those of its own saves before `save`
/// returns, all others on the queue of the context, which is therefore to be used by its queue when others
/// save. A subscription may be ended on any thread, keeps the context and the latest objects alive, and ends
/// all its work when it ends. Each save of the store's contexts costs a fetch.
template <class T = NSManagedObject>
Streams::AnyPublisher<std::vector<Ref<T>>, StoreError> observe(
    const Ref<NSManagedObjectContext>& context, NSFetchRequest request)
{
    using Objects = std::vector<Ref<T>>;
    using Subject = Streams::PassthroughSubject<Objects, StoreError>;
    return Streams::create<Objects, StoreError>(
        [context, request = std::move(request)](const Subject& subject) {
            const auto receiveObjects = [subject](const std::vector<Ref<NSManagedObject>>& objects) {
                Objects result;
                result.reserve(objects.size());
                for (const auto& object : objects)
                    if (auto found = std::dynamic_pointer_cast<T>(object))
                        result.push_back(std::move(found));
                subject.send(std::move(result));
            };
            const auto receiveError = [subject](const StoreError& error) { subject.send(error); };
            return detail::observeFetch(context, request, {receiveObjects, receiveError});
        });
}

} // namespace orrenby
