#pragma once

/// @file
/// Making objects whose end is an event: `make<T>(…)`.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Lifetime.hpp"
#include "Orrenby/Platform/Objects/Ref.hpp"
#include "Orrenby/Platform/Objects/Trace.hpp"
#include "Orrenby/Platform/Objects/TypeName.hpp"
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// The one class that closes a class with a life, so that it can be created.
///
/// It calls `afterInit` when all constructors have run, and `release` while `T` is still whole. On the stack:
/// `Object<MyWorker> worker;`. Neither copyable nor movable: an object is itself, not a value.
template <class T> class Object final : public T {
public:
    /// Passes the arguments on to a constructor of `T`, then calls `afterInit`.
    template <class... A>
        requires(!(std::is_same_v<std::remove_cvref_t<A>, Object> || ...))
    explicit Object(A&&... arguments)
        : T(std::forward<A>(arguments)...)
    {
        this->afterInit(Final<T>{});
    }

    ~Object() override { static_cast<Lifetime&>(*this).release(); }

private:
    void createdWithMake() const override {}
};

/// Creates an object and hands out the first reference to it. One allocation.
///
/// @snippet Tests/Platform/Objects/ObjectTests.cpp Making an object
template <class T, class... A> [[nodiscard]] Ref<T> make(A&&... arguments)
{
    constexpr bool hasLife = std::is_convertible_v<T*, Lifetime*>;
    static_assert(hasLife,
        "make<T> creates classes with a life: T must derive, publicly and once, from a library class such as AbstractWorker");
    static_assert(!std::is_final_v<T>, "make<T> closes T itself: T must not be declared final");
    if constexpr (hasLife && !std::is_final_v<T>) {
#ifdef ORRENBY_DIAGNOSTICS
        Trace::report(Trace::Kind::Make, typeName<T>(), CallSite("", 0, "make"));
#endif
        return std::make_shared<Object<T>>(std::forward<A>(arguments)...);
    } else
        return nullptr; // after the assertion above, so that it is the only error
}

} // namespace orrenby
