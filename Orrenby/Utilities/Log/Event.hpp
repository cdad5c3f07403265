#pragma once

/// @file
/// What a log handler gets to see of an entry.

#include "Orrenby/Platform/Export.hpp"
#include "Orrenby/Platform/Objects/Dictionary.hpp"
#include <cstdint>
#include <string>
#include <utility>

namespace orrenby::inline ORRENBY_ABI::Log {

/// One log entry, ready to be printed or sent. It does not change.
///
/// It carries no time and no process: a handler that wants them adds them.
///
/// @snippet Tests/Utilities/Log/EventTests.cpp Printing an event
///
/// A value; copying it copies its texts. Not synchronised.
class ORRENBY_EXPORT Event {
public:
    /// An event of these texts, as a handler or a test makes one.
    Event(std::string level, std::string filename, std::int64_t line, std::string function, std::string queue,
        std::string message, Dictionary properties = {})
        : m_level(std::move(level))
        , m_filename(std::move(filename))
        , m_line(line)
        , m_function(std::move(function))
        , m_queue(std::move(queue))
        , m_message(std::move(message))
        , m_properties(std::move(properties))
    {}
    Event(const Event&);
    Event(Event&&) noexcept;
    Event& operator=(const Event&);
    Event& operator=(Event&&) noexcept;
    ~Event();

    /// The level's emoji or its code, as `Log::useEmoji()` was when the event was made.
    const std::string& level() const noexcept { return m_level; }

    /// Of the source file, without folders and extension.
    const std::string& filename() const noexcept { return m_filename; }

    /// Of the source file, counted from 1.
    std::int64_t line() const noexcept { return m_line; }

    /// As the caller gave it; the plain name, where the compiler filled it in.
    const std::string& function() const noexcept { return m_function; }

    /// The queue's emoji or its code.
    const std::string& queue() const noexcept { return m_queue; }

    /// Without level and place.
    const std::string& message() const noexcept { return m_message; }

    /// What the caller added; often empty.
    const Dictionary& properties() const noexcept { return m_properties; }

    /// `W Feed:120 load [MAIN] request failed`, then the properties after a blank, if there are any. Texts
    /// stand in it as they are: one that holds a line break breaks the line.
    std::string description() const;
    std::string debugDescription() const { return description(); }

    friend bool operator==(const Event&, const Event&) = default;

private:
    std::string m_level;
    std::string m_filename;
    std::int64_t m_line;
    std::string m_function;
    std::string m_queue;
    std::string m_message;
    Dictionary m_properties;
};

} // namespace orrenby::Log
