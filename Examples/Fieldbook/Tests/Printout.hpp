#pragma once

/// @file
/// What a terminal printed.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace fieldbook {

/// A file for a terminal to print into, without a name: it goes away with its test.
class Printout {
public:
    Printout()
    {
        if (m_file == nullptr)
            std::abort();
    }
    Printout(const Printout&) = delete;
    Printout& operator=(const Printout&) = delete;
    ~Printout() { std::fclose(m_file); }

    /// To be printed into.
    int descriptor() const { return ::fileno(m_file); }

    /// Everything that was printed so far.
    std::string text() const
    {
        std::string text(static_cast<std::size_t>(::lseek(descriptor(), 0, SEEK_END)), '\0');
        EXPECT_EQ(::pread(descriptor(), text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
        return text;
    }

    /// What was printed since the last call.
    std::string news()
    {
        const auto news = text().substr(m_seen);
        m_seen += news.size();
        return news;
    }

private:
    std::FILE* m_file = std::tmpfile();
    std::size_t m_seen = 0;
};

} // namespace fieldbook
