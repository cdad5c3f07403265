#include "Scenario/Steps.hpp"

#include <algorithm>

namespace fieldbook {

namespace {

// clang-format off
constexpr Verb all[] = {
    {"start", "[OPTION...] [LINK]", "starts the application on the folder reports, with the options of fieldbook that make no folder", steps::start},
    {"type", "LINE", "what somebody types", steps::type},
    {"leave", "", "lets go of the tree, and closes its store; without --store= there is one in memory", steps::leave},
    {"wait", "SECONDS", "lets so many whole seconds pass", steps::wait},

    {"write", "FILE TEXT", "writes a text into a file of the folder", steps::write},
    {"remove", "FILE", "removes a file of the folder", steps::remove},
    {"move", "FILE FILE", "gives a file of the folder another name", steps::move},
    {"photo", "FILE BYTES", "writes a photo of that size, with bytes of all kinds", steps::photo},

    {"serve", "[OPTION...]", "starts the service, with the options of fieldbookd that have to do with reports and faults", steps::serve},
    {"kill", "", "kills it, with everything on its way; what it got stays", steps::kill},
    {"forget", "", "lets it forget who is signed in", steps::forget},
    {"received", "", "lists what it got", steps::received},
    {"compare", "NUMBER FILE", "compares a photo that it got with a file, byte for byte", steps::compare},
    {"rush", "COUNT", "lets two threads sign in and send so often, at the same time", steps::rush},

    {"first-version", "FILE", "writes a store of the first version, with one report and an order", steps::firstVersion},
    {"stored", "FILE", "lists what a store holds that nobody has open", steps::stored},
    {"transaction", "FILE", "changes a store in one transaction whose last object lacks what it has to have", steps::transaction},
    {"damage", "FILE", "overwrites the beginning of a file", steps::damage},

    {"alive", "", "what of the tree is alive, and what waits in queues", steps::alive},
    {"engine", "Combine|Rx", "chooses a stream engine, and tells how streams behave from then on", steps::engine},
    {"caption", "TEXT", "shows a text as cards do, without styles and with them", steps::caption},
};
// clang-format on

} // namespace

std::span<const Verb> verbs() { return all; }

std::string manual()
{
    constexpr std::size_t indent = 28;
    std::string text;
    for (const auto& verb : all) {
        auto line = std::string(verb.name);
        if (!verb.arguments.empty())
            line.append(" ").append(verb.arguments);
        line.resize(std::max(indent, line.size() + 1), ' ');
        text.append(line).append(verb.meaning).append("\n");
    }
    return text;
}

} // namespace fieldbook
