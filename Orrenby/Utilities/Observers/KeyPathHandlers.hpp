#pragma once

/// @file
/// What key-path observers of all objects have in common.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/UniqueFunction.hpp"
#include "Orrenby/Platform/Observing/KeyValueObserver.hpp"
#include "Orrenby/Platform/Observing/ObservableObject.hpp"
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrenby::inline ORRENBY_ABI::detail {

/// One handler for each path, without the types of the values. See `KeyPathObserver`.
///
/// Its public members are those of what derives from it.
class ORRENBY_EXPORT KeyPathHandlers : public Lifetime,
                                       public KeyValueObserver,
                                       public std::enable_shared_from_this<KeyPathHandlers> {
public:
    /// Takes back all registrations, in the order in which their paths were first observed.
    void unobserveAll(TraceSite site = TraceSite::current());

    /// Passes a change on to the handler of its path. Called by the object.
    void observeValue(
        const std::string& keyPath, ObservableObject& object, const KeyValueChange& change) override;

protected:
    /// Takes the changed object and the change.
    using Handler = UniqueFunction<void(const KeyValueChange&)>;

    /// The object must not be empty.
    explicit KeyPathHandlers(Ref<ObservableObject> object);
    [[noreturn]] KeyPathHandlers();

    /// This observer as a reference, which keeps it alive. Only what was made with `make` has one.
    Ref<KeyPathHandlers> self();
    std::optional<Any> currentValue(std::string_view keyPath) const
    {
        return m_object->valueForKeyPath(keyPath);
    }
    void observe(std::string_view keyPath, Handler handler, TraceSite site);
    void unobserve(std::string_view keyPath, TraceSite site);

private:
    void release() noexcept final;

    /// In the order of first observing. Shared, because a handler may be replaced while it runs.
    std::vector<std::pair<std::string, Ref<Handler>>> m_handlers;
    Ref<ObservableObject> m_object;
};

} // namespace orrenby::inline ORRENBY_ABI::detail
