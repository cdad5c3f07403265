#pragma once

/// @file
/// A value that goes away before the object that holds it.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/FatalError.hpp"
#include <optional>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::detail {

/// Holds a value of any type from its making to the end of the object's life, which comes before its
/// destructor.
template <class Value> class ReleasableField {
public:
    explicit ReleasableField(Value value)
        : m_value(std::move(value))
    {}

    /// The value. Reading it in a destructor of the holder is a programming error.
    const Value& get() const
    {
        if (!m_value) [[unlikely]]
            fatalError("Use of a value after the end of its owner", "Utilities/Discover");
        return *m_value;
    }

    void release() { m_value.reset(); }

private:
    std::optional<Value> m_value;
};

} // namespace orrenby::detail
