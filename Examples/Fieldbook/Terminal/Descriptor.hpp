#pragma once

/// @file
/// A file descriptor that is closed by its owner's end.

#include <unistd.h>
#include <utility>

namespace fieldbook {

/// Owns a file descriptor. Movable, not copyable.
class Descriptor {
public:
    Descriptor() = default;

    /// Takes over `number`; a negative one, as system calls give when they fail, stands for none.
    explicit Descriptor(int number)
        : m_number(number)
    {}

    Descriptor(Descriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {}

    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }

    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }

    int number() const { return m_number; }
    explicit operator bool() const { return m_number >= 0; }

private:
    int m_number = -1;
};

} // namespace fieldbook
