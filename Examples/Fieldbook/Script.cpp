#include "Script.hpp"

#include "Orrenby/Utilities/Log/Entries.hpp"
#include <fstream>
#include <system_error>

namespace fieldbook {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view ford = R"(Title: Footbridge under water
Place: Lower Marrow, ford
Observer: Ines Calder
Severity: medium

The stream reached the planks at ten. Walkers turn back by themselves.
)";

constexpr std::string_view fordWorse = R"(Title: Footbridge carried away
Place: Lower Marrow, ford
Observer: Ines Calder
Severity: high

The eastern half is gone. Both banks are taped off.
)";

constexpr std::string_view halfWritten = R"(Title: Wasps in the information board
Place: Harrow Gate
Observ)";

constexpr std::string_view wasps = R"(Title: Wasps in the information board
Place: Harrow Gate
Observer: Jonas Brandt
Severity: low

A nest behind the map. Not aggressive; a notice hangs beside it.
)";

constexpr std::string_view signMended = R"(Title: Signpost upright again
Place: Three Stones crossing
Observer: Tomé Ferreira
Severity: low

New post, old arms. All four point where they should.
)";

using Act = ScriptStep::Act;

constexpr ScriptStep script[] = {
    {Act::write, "ford.report", ford},
    {Act::replace, "ford.report", fordWorse},
    {Act::write, "wasps.report", halfWritten},
    {Act::write, "wasps.report", wasps},
    {Act::write, "owl-count.report", "Title: Owl count\nSeverity: enormous\n"},
    {Act::write, "signpost.report", signMended},
    {Act::move, "wasps.report", "wasps-harrow-gate.report"},
    {Act::remove, "mast-light.report"},
    {Act::remove, "torn-page.report"},
    {Act::command, "sort severity"},
    {Act::command, "fieldbook://report/4"},
    {Act::command, "fieldbook://report/6"},
    {Act::command, "details off"},
    {Act::command, "fieldbook://report/1"},
    {Act::command, "fieldbook://report/99"},
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
