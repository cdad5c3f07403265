#pragma once

/// @file
/// Callables that are moved, not copied.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Concepts.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include "Orrenby/Platform/Objects/Invoke.hpp"
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

template <class Signature> class UniqueFunction;

namespace detail {

/// Moved by copying its bytes, and never destroyed.
template <class T>
concept PlainBytes = std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>;

} // namespace detail

/// Owns one callable of any type, which need not be copyable.
///
/// Callables of up to four words are held in place, larger ones on the heap. Moving never throws and leaves
/// an empty function behind; calling an empty one is a programming error. A null function pointer makes an
/// empty one.
///
/// @snippet Tests/Platform/Objects/UniqueFunctionTests.cpp Passing a callable on
///
/// A call costs one indirect call. Not synchronised.
template <class R, class... Arguments> class UniqueFunction<R(Arguments...)> {
public:
    UniqueFunction() noexcept = default;

    /// An empty one.
    UniqueFunction(std::nullptr_t) noexcept {}

    /// Anything that can be called so; a null pointer makes an empty function. Allocates above four words.
    template <detail::CallableFor<UniqueFunction, R, Arguments...> F> UniqueFunction(F&& function)
    {
        using Callable = std::decay_t<F>;
        if constexpr (std::is_pointer_v<Callable> || std::is_member_pointer_v<Callable>) {
            const Callable pointer = function;
            if (pointer == nullptr)
                return;
        }
        if constexpr (fitsInPlace<Callable>) {
            ::new (static_cast<void*>(m_storage)) Callable(std::forward<F>(function));
            m_call = [](void* storage, Arguments... arguments) -> R {
                return invoke(
                    *std::launder(static_cast<Callable*>(storage)), std::forward<Arguments>(arguments)...);
            };
            if constexpr (!detail::PlainBytes<Callable>)
                m_manage = [](void* from, void* to) noexcept {
                    auto* callable = std::launder(static_cast<Callable*>(from));
                    if (to != nullptr)
                        ::new (to) Callable(std::move(*callable));
                    callable->~Callable();
                };
        } else {
            ::new (static_cast<void*>(m_storage)) Callable*(new Callable(std::forward<F>(function)));
            m_call = [](void* storage, Arguments... arguments) -> R {
                return invoke(
                    **std::launder(static_cast<Callable**>(storage)), std::forward<Arguments>(arguments)...);
            };
            m_manage = [](void* from, void* to) noexcept {
                auto* callable = *std::launder(static_cast<Callable**>(from));
                if (to != nullptr)
                    ::new (to) Callable*(callable);
                else
                    delete callable;
            };
        }
    }

    UniqueFunction(UniqueFunction&& other) noexcept { take(other); }
    UniqueFunction& operator=(UniqueFunction&& other) noexcept
    {
        if (this != &other) {
            // What the old callable's destructor does must already see the new state.
            auto old = std::move(*this);
            take(other);
        }
        return *this;
    }
    ~UniqueFunction()
    {
        if (m_manage != nullptr)
            m_manage(m_storage, nullptr);
    }

    /// Whether there is something to call.
    explicit operator bool() const noexcept { return m_call != nullptr; }

    /// Whether there is nothing to call.
    friend bool operator==(const UniqueFunction& function, std::nullptr_t) noexcept { return !function; }

    /// Calls it. An empty one is a programming error and ends the process.
    R operator()(Arguments... arguments)
    {
        if (m_call == nullptr)
            fatalError("Call of an empty UniqueFunction", "Platform/UniqueFunction", 95);
        return m_call(m_storage, std::forward<Arguments>(arguments)...);
    }

private:
    static constexpr std::size_t inPlaceSize = 4 * sizeof(void*);

    template <class Callable>
    static constexpr bool fitsInPlace = sizeof(Callable) <= inPlaceSize && alignof(Callable) <= alignof(void*)
        && std::is_nothrow_move_constructible_v<Callable>;

    template <class Callable> static R invoke(Callable& callable, Arguments&&... arguments)
    {
        if constexpr (std::is_void_v<R>)
            static_cast<void>(detail::invoke(callable, std::forward<Arguments>(arguments)...));
        else
            return detail::invoke(callable, std::forward<Arguments>(arguments)...);
    }

    void take(UniqueFunction& other) noexcept
    {
        m_call = std::exchange(other.m_call, nullptr);
        m_manage = std::exchange(other.m_manage, nullptr);
        if (m_manage != nullptr)
            m_manage(other.m_storage, m_storage);
        else if (m_call != nullptr)
            std::memcpy(m_storage, other.m_storage, inPlaceSize);
    }

    R (*m_call)(void*, Arguments...) = nullptr;
    /// Moves, or destroys when `to` is null. None for plain bytes.
    void (*m_manage)(void* from, void* to) noexcept = nullptr;
    alignas(void*) std::byte m_storage[inPlaceSize] = {};
};

} // namespace orrenby
