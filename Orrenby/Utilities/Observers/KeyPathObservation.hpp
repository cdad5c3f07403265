#pragma once

/// @file
/// What handlers of a key-path observer receive.

#include "Orrenby/Platform/Export.hpp"
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI {

/// A change from one value to another.
template <typename Value> struct KeyPathChange {
    Value value;    ///< After the change.
    Value oldValue; ///< Before it.

    friend bool operator==(const KeyPathChange&, const KeyPathChange&) = default;
};

/// Either the value that was there when observing began, or a change of it.
///
/// A plain value. Not synchronised.
template <typename Value> class KeyPathObservation {
public:
    /// The value when observing began.
    static KeyPathObservation initial(Value value) { return {std::move(value), std::nullopt}; }

    /// A change of it.
    static KeyPathObservation change(KeyPathChange<Value> change)
    {
        return {std::move(change.value), std::move(change.oldValue)};
    }

    /// Which of the two it is.
    bool isInitial() const noexcept { return !m_oldValue.has_value(); }
    bool isChange() const noexcept { return m_oldValue.has_value(); }

    /// The value that was there, or that is there after the change.
    const Value& value() const noexcept { return m_value; }

    /// The value before the change. An initial observation has none: there it is the value itself.
    const Value& oldValue() const noexcept { return m_oldValue.has_value() ? *m_oldValue : m_value; }

    friend bool operator==(const KeyPathObservation&, const KeyPathObservation&) = default;

private:
    KeyPathObservation(Value value, std::optional<Value> oldValue)
        : m_value(std::move(value))
        , m_oldValue(std::move(oldValue))
    {}

    Value m_value;
    std::optional<Value> m_oldValue;
};

} // namespace orrenby
