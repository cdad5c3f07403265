#pragma once

/// @file
/// The root of every class whose end is an event of its own.

#include "Orrenby/Platform/Export.hpp"

namespace orrenby::inline ORRENBY_ABI {

template <class T> class Object;

/// Names the most derived class of an object to `afterInit`.
template <class T> struct Final {};

/// Root of all classes with a life: flows, contexts, workers, controllers.
///
/// Their last act runs while the object is still whole, so that hooks of the most derived class can take
/// part. C++ would have destroyed that part by the time a base destructor runs; therefore such a class is
/// abstract until `Object<T>` (see Object.hpp) closes it, and instances come from `make<T>(…)`. A class
/// derives from exactly one class with a life, never virtually. Interfaces are not classes with a life.
///
/// Not synchronised.
class ORRENBY_EXPORT Lifetime {
public:
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    virtual ~Lifetime();

protected:
    Lifetime() = default;

    /// Runs once after the constructors, on the class that was made. A base class shadows it to learn what
    /// its final class is: `template <class T> void afterInit(Final<T>)` may test `T` at compile time.
    template <class T> void afterInit(Final<T>) {}

private:
    /// The end of the object, when all of it still stands. At this moment no reference is left: weak
    /// references and `shared_from_this()` give nothing, only `this` may be used. A hook that throws
    /// terminates the process.
    virtual void release() noexcept = 0;

    /// Defined by `Object<T>` alone. An error that names this function means: create the object with
    /// `make<T>(…)`.
    virtual void createdWithMake() const = 0;

    template <class T> friend class Object;
};

} // namespace orrenby
