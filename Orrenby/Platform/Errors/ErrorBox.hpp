#pragma once

/// @file
/// What an `AnyError` shares with its copies: a value or a thrown exception. Not for use of its own.

#include "Orrenby/Platform/Errors/ErrorValue.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Describe.hpp"
#include <concepts>
#include <exception>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

namespace detail {

/// The side of a held error that does not depend on its type. Immutable.
class ORRENBY_EXPORT ErrorBox {
public:
    ErrorBox(const ErrorBox&) = delete;
    ErrorBox& operator=(const ErrorBox&) = delete;
    virtual ~ErrorBox();

    virtual bool isErrorValue() const noexcept = 0;
    virtual std::string description() const = 0;
    virtual std::string debugDescription() const = 0;
    virtual NSError nsError() const = 0;
    [[noreturn]] virtual void rethrow() const = 0;

    std::optional<NSError> customNSError() const;

    template <class T> const T* find() const noexcept
    {
        if (const void* exact = address(typeid(T)))
            return static_cast<const T*>(exact);
        if constexpr (std::derived_from<T, std::exception>)
            if (m_exception)
                return dynamic_cast<const T*>(m_exception);
        return findByThrowing<T>();
    }

protected:
    /// Which throw lets the run time, which alone knows all bases of a type, compare types.
    enum class Match {
        None,      ///< The exact type is the only one.
        Exception, ///< `rethrow()` throws the very object that is held.
        Pointer,   ///< `throwPointer()` throws the address of the object that is held.
    };

    explicit ErrorBox(Match match) noexcept
        : m_match(match)
    {}

    /// What is held, if it is a `std::exception`. Set once, while the box is made.
    const std::exception* exception() const noexcept { return m_exception; }
    void setException(const std::exception& exception) noexcept { m_exception = &exception; }

    /// Of what is held, if that is known to be exactly of `type`.
    virtual const void* address(const std::type_info& type) const noexcept = 0;

    [[noreturn]] virtual void throwPointer() const;

private:
    template <class T> const T* findByThrowing() const noexcept
    {
        // A thrown raw pointer has no place of its own that a reference could be kept to.
        if constexpr (!std::is_pointer_v<T>)
            if (m_match == Match::Exception)
                try {
                    rethrow();
                } catch (const T& thrown) {
                    return &thrown;
                } catch (...) {}
        if constexpr (std::is_class_v<T>)
            if (m_match == Match::Pointer)
                try {
                    throwPointer();
                } catch (const T* held) {
                    return held;
                } catch (...) {}
        return nullptr;
    }

    Match m_match;
    const std::exception* m_exception = nullptr;
};

template <class Value> class ErrorValueBox final : public ErrorBox {
public:
    template <class Source>
    explicit ErrorValueBox(Source&& value)
        : ErrorBox(std::is_class_v<Value> ? Match::Pointer : Match::None)
        , m_value(std::forward<Source>(value))
    {
        if constexpr (std::derived_from<Value, std::exception>)
            setException(m_value);
    }

    bool isErrorValue() const noexcept override { return ErrorValue<Value>; }

    std::string description() const override { return describe(m_value); }

    std::string debugDescription() const override { return debugDescribe(m_value); }
    NSError nsError() const override { return bridged(m_value); }
    [[noreturn]] void rethrow() const override { throw Value(m_value); }

private:
    const void* address(const std::type_info& type) const noexcept override
    {
        return type == typeid(Value) ? &m_value : nullptr;
    }

    [[noreturn]] void throwPointer() const override
    {
        if constexpr (std::is_class_v<Value>)
            throw &m_value;
        else
            ErrorBox::throwPointer();
    }

    Value m_value;
};

} // namespace detail

} // namespace orrenby
