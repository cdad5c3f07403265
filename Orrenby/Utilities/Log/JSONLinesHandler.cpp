#include "Orrenby/Utilities/Log/JSONLinesHandler.hpp"

#include "Orrenby/Platform/Objects/Any.hpp"
#include "Orrenby/Platform/Objects/Array.hpp"
#include "Orrenby/Platform/Objects/NSSet.hpp"
#include "Orrenby/Utilities/Log/LineText.hpp"
#include "Orrenby/Utilities/Log/Queue.hpp"
#include <cmath>
#include <string_view>

namespace orrenby::inline ORRENBY_ABI::Log {

namespace {

constexpr int maximumDepth = 64;

void appendValue(std::string& line, const Any& value, int depth);

/// Finite numbers have the same form in JSON as when they are printed.
template <class Number> void appendNumber(std::string& line, Number number)
{
    if (std::isfinite(number))
        line += describe(number);
    else
        detail::appendJSONText(line, describe(number));
}

template <class Values> void appendList(std::string& line, const Values& values, int depth)
{
    line += '[';
    bool isFirst = true;
    for (const Any& value : values) {
        if (!std::exchange(isFirst, false))
            line += ',';
        appendValue(line, value, depth);
    }
    line += ']';
}

void appendDictionary(std::string& line, const Dictionary& dictionary, int depth)
{
    line += '{';
    bool isFirst = true;
    for (const auto& [key, value] : dictionary) {
        if (!std::exchange(isFirst, false))
            line += ',';
        detail::appendJSONText(line, key);
        line += ':';
        appendValue(line, value, depth);
    }
    line += '}';
}

/// @param depth  How many lists and dictionaries the value stands in.
void appendValue(std::string& line, const Any& value, int depth)
{
    using Kind = Any::Kind;
    switch (value.kind()) {
    case Kind::Null:
        line += "null";
        return;
    case Kind::Bool:
    case Kind::Int:
        line += value.description();
        return;
    case Kind::Float:
        return appendNumber(line, *value.get<float>());
    case Kind::Double:
        return appendNumber(line, *value.get<double>());
    case Kind::Date:
        return detail::appendJSONText(line, detail::timestamp(*value.get<Date>()));
    case Kind::Text:
        return detail::appendJSONText(line, value.text());
    case Kind::Bytes:
    case Kind::Object:
    case Kind::Opaque:
        return detail::appendJSONText(line, value.description());
    case Kind::List:
    case Kind::Dictionary:
    case Kind::Set:
        break;
    }
    if (depth >= maximumDepth)
        detail::appendJSONText(line, "\u2026");
    else if (const auto* list = value.get<Array>())
        appendList(line, *list, depth + 1);
    else if (const auto* dictionary = value.get<Dictionary>())
        appendDictionary(line, *dictionary, depth + 1);
    else if (const auto* set = value.get<NSSet>())
        appendList(line, *set, depth + 1);
}

std::string_view nameOfQueue(const std::string& text)
{
    for (const Queue queue : {Queue::main, Queue::background})
        if (text == queue.emoji() || text == queue.code())
            return queue.description();
    return text;
}

void appendMember(std::string& line, std::string_view name, std::string_view text)
{
    line.append(line.empty() ? "{\"" : ",\"").append(name).append("\":");
    detail::appendJSONText(line, text);
}

} // namespace

JSONLinesHandler::JSONLinesHandler(JSONLinesOptions options)
    : m_descriptor(options.descriptor)
    , m_level(options.level)
{}

void JSONLinesHandler::operator()(Level level, const DeferredEvent& event) const
{
    if (level < m_level)
        return;
    const auto time = Date::now();
    detail::writeLine(m_descriptor, line(level, event(), time));
}

std::string JSONLinesHandler::line(Level level, const Event& event, Date time)
{
    std::string line;
    appendMember(line, "time", detail::timestamp(time));
    appendMember(line, "level", level.description());
    appendMember(line, "queue", nameOfQueue(event.queue()));
    appendMember(line, "file", event.filename());
    line.append(",\"line\":").append(std::to_string(event.line()));
    appendMember(line, "function", event.function());
    appendMember(line, "message", event.message());
    if (!event.properties().empty()) {
        line += ",\"properties\":";
        appendDictionary(line, event.properties(), 1);
    }
    line += "}\n";
    return line;
}

} // namespace orrenby::Log
