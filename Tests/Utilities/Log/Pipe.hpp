#pragma once

/// @file
/// A pipe that a handler writes to.

#include <string>
#include <unistd.h>

class Pipe {
public:
    Pipe()
    {
        if (pipe(m_ends) != 0)
            m_ends[0] = m_ends[1] = -1;
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe()
    {
        close(m_ends[0]);
        close(m_ends[1]);
    }

    int descriptor() const { return m_ends[1]; }

    /// What was written so far, up to 64 KB; at least one byte has to be there.
    std::string read()
    {
        std::string text(65536, '\0');
        const auto count = ::read(m_ends[0], text.data(), text.size());
        text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return text;
    }

private:
    int m_ends[2];
};
