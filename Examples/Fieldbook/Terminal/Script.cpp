#include "Terminal/Script.hpp"

#include "Orrenby/Utilities/Log/Entries.hpp"
#include <fstream>
#include <system_error>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view ford = R"({
    "title": "Footbridge under water",
    "place": "Lower Marrow, ford",
    "observer": "Ines Calder",
    "severity": "medium",
    "body": "The stream reached the planks at ten. Walkers turn back by themselves."
}
)";

constexpr std::string_view fordWorse = R"({
    "title": "Footbridge carried away",
    "place": "Lower Marrow, ford",
    "observer": "Ines Calder",
    "severity": "high",
    "body": "The eastern half is gone. Both banks are taped off."
}
)";

constexpr std::string_view halfWritten = R"({
    "title": "Wasps in the information board",
    "place": "Harrow Gate",
    "obser)";

constexpr std::string_view wasps = R"({
    "title": "Wasps in the information board",
    "place": "Harrow Gate",
    "observer": "Jonas Brandt",
    "severity": "low",
    "body": "A nest behind the map. Not aggressive; a notice hangs beside it."
}
)";

constexpr std::string_view owlsOfNobody = R"({
    "title": "Four young owls in the north barn",
    "place": "Harrow Gate",
    "severity": "low"
}
)";

constexpr std::string_view signMended = R"({
    "title": "Signpost upright again",
    "place": "Three Stones crossing",
    "observer": "Tomé Ferreira",
    "severity": "low",
    "body": "New post, old arms. All four point where they should."
}
)";

constexpr std::string_view owls = R"({
    "title": "Four young owls in the north barn",
    "place": "Harrow Gate",
    "observer": "Tomé Ferreira",
    "severity": "low"
}
)";

constexpr std::string_view fordMended = R"({
    "title": "Footbridge open again",
    "place": "Lower Marrow, ford",
    "observer": "Ines Calder",
    "severity": "low"
}
)";

using Act = ScriptStep::Act;

constexpr ScriptStep script[] = {
    {Act::command, "sign in ines.calder@chapel-bank"},
    {Act::command, "sign in ines.calder@chapel-bank.example"},
    {Act::await},
    {Act::write, "ford.json", ford},
    {Act::replace, "ford.json", fordWorse},
    {Act::write, "wasps.json", halfWritten},
    {Act::write, "wasps.json", wasps},
    {Act::write, "owl-count.json", owlsOfNobody},
    {Act::write, "signpost.json", signMended},
    {Act::move, "wasps.json", "wasps-harrow-gate.json"},
    {Act::remove, "mast-light.json"},
    {Act::remove, "torn-page.json"},
    {Act::command, "sort severity"},
    {Act::write, "barn-owls.json", owls},
    {Act::replace, "ford.json", fordMended},
    {Act::remove, "washed-out-path.json"},
    {Act::command, "samples 2 autumn"},
    {Act::command, "sort place"},
    {Act::command, "fieldbook://report/6"},
    {Act::command, "fieldbook://report/8"},
    {Act::command, "language de"},
    {Act::command, "fieldbook://report/8"},
    {Act::command, "details off"},
    {Act::command, "fieldbook://report/1"},
    {Act::command, "fieldbook://report/99"},
    {Act::command, "refresh"},
    {Act::await},
    {Act::command, "upload"},
};

void write(const fs::path& path, std::string_view text)
{
    auto file = std::ofstream(path, std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file)
        throw fs::filesystem_error("cannot write", path, std::make_error_code(std::errc::io_error));
}

std::string_view nameOf(Act act)
{
    switch (act) {
    case Act::write:
        return "write ";
    case Act::replace:
        return "replace ";
    case Act::move:
        return "move ";
    case Act::remove:
        return "remove ";
    case Act::command:
    case Act::await:
        return "";
    }
    return "";
}

void performUnchecked(const ScriptStep& step, const fs::path& folder)
{
    const auto path = folder / step.file;
    switch (step.act) {
    case Act::write:
        write(path, step.text);
        break;
    case Act::replace:
        write(folder / ".half-written", step.text);
        fs::rename(folder / ".half-written", path);
        break;
    case Act::move:
        fs::rename(path, folder / step.text);
        break;
    case Act::remove:
        fs::remove(path);
        break;
    case Act::command:
    case Act::await:
        break;
    }
}

} // namespace

std::string ScriptStep::description() const
{
    auto result = std::string(nameOf(act)).append(file);
    if (act == Act::move)
        result.append(" to ").append(text);
    return result;
}

std::span<const ScriptStep> demoScript() { return script; }

void perform(const ScriptStep& step, const fs::path& folder)
{
    try {
        performUnchecked(step, folder);
    } catch (const fs::filesystem_error& error) {
        orrenby::Log::error(
            [&] { return std::string("the script cannot go on as planned: ") + error.what(); });
    }
}

} // namespace fieldbook
