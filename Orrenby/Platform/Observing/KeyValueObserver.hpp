#pragma once

/// @file
/// What is told of changed values, and what it is told.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Any.hpp"
#include <optional>
#include <string>

namespace orrenby::inline ORRENBY_ABI {

class ObservableObject;

/// What an observer wants to be told.
struct ObservingOptions {
    bool new_ = false;    ///< The value after the change.
    bool old = false;     ///< The value before the change.
    bool prior = false;   ///< A call of its own before each change, with `isPrior`.
    bool initial = false; ///< A call at once, while registering.
};

/// One change of the value at a key path.
///
/// A value is absent when it was not asked for, when its key is unknown to the object, or when the path led
/// through an empty reference at that moment. A property that holds nothing has the value null.
struct KeyValueChange {
    std::optional<Any> newValue = {}; ///< After the change.
    std::optional<Any> oldValue = {}; ///< Before the change.
    bool isPrior = false;             ///< The change has not been made yet.

    friend bool operator==(const KeyValueChange&, const KeyValueChange&) = default;
};

/// Receives the changes that it registered for, see `ObservableObject::addObserver`.
///
/// Held by `Ref`; registrations refer to it weakly and vanish with it.
///
/// Not synchronised: one that observes values that several threads change is called by all of them, perhaps
/// at the same time.
class ORRENBY_EXPORT KeyValueObserver {
public:
    virtual ~KeyValueObserver();

    /// Called on the thread that makes the change. Setting values, registering and removing from within it
    /// are fine; so is dropping the last reference to this observer or to the object. What it throws ends
    /// the process.
    ///
    /// @param keyPath  The path as it was registered.
    /// @param object   The object on which it was registered, also when another one along the path changed.
    virtual void observeValue(
        const std::string& keyPath, ObservableObject& object, const KeyValueChange& change)
        = 0;

protected:
    KeyValueObserver() = default;
    KeyValueObserver(const KeyValueObserver&) = default;
    KeyValueObserver& operator=(const KeyValueObserver&) = default;
};

} // namespace orrenby
