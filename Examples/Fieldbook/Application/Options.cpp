#include "Application/Options.hpp"

#include "Card/DeepLink.hpp"
#include "Settings/Language.hpp"
#include "SignIn/SignIn.hpp"
#include "Terminal/Text.hpp"
#include <utility>

namespace fieldbook {

namespace {

using Outcome = orrenby::Result<Options, std::string>;

/// Sets the option of this name; gives whether there is one.
bool setOption(std::string_view name, Options& options)
{
    if (name == "--help" || name == "-h")
        options.isHelp = true;
    else if (name == "--guest")
        options.isGuest = true;
    else if (name == "--script")
        options.isScript = true;
    else if (name == "--upload")
        options.isUpload = true;
    else if (name == "--watch")
        options.isWatch = true;
    else if (name == "--rx")
        options.usesRx = true;
    else if (constexpr std::string_view station = "--station="; name.starts_with(station))
        options.station = name.substr(station.size());
    else if (constexpr std::string_view store = "--store="; name.starts_with(store) && name != store)
        options.store = name.substr(store.size());
    else
        return false;
    return true;
}

constexpr std::string_view userOption = "--user=";

/// Sets who signs in; gives why nobody does.
std::optional<std::string> setUser(std::string_view address, Options& options)
{
    const auto outcome = addressToSignIn(address);
    if (const auto problem = outcome.error())
        return "--user: " + *problem;
    options.user = outcome.unwrap();
    return {};
}

constexpr std::string_view serviceOption = "--service=";

std::optional<std::string> setService(std::string_view address, Options& options)
{
    options.service = orrenby::URL::make(address);
    const auto scheme = options.service ? options.service->scheme() : std::nullopt;
    if ((scheme == "http" || scheme == "https") && !options.service->host().value_or("").empty())
        return {};
    return "--service takes a URL that begins with http:// or https://";
}

constexpr std::string_view languageOption = "--language";

std::optional<std::string> setLanguage(std::string_view name, Options& options)
{
    options.language = languageNamed(name);
    if (options.language)
        return {};
    return "--language takes a code such as de or pt_BR";
}

constexpr std::string_view samplesOption = "--generate=";

std::optional<std::string> setSamples(std::string_view request, Options& options)
{
    options.samples = sampleRequestIn(request, ',');
    if (options.samples)
        return {};
    return "--generate takes a number up to " + std::to_string(SampleRequest::limit)
        + ", and a seed of letters and digits behind a comma";
}

} // namespace

orrenby::Result<Options, std::string> parseOptions(std::span<const char* const> arguments)
{
    Options options;
    bool areOptionsOver = false;
    bool isLanguageNext = false;
    for (const std::string_view argument : arguments) {
        if (std::exchange(isLanguageNext, false)) {
            if (const auto problem = setLanguage(argument, options))
                return Outcome::failure(*problem);
            continue;
        }
        if (!areOptionsOver && argument == "--")
            areOptionsOver = true;
        else if (!areOptionsOver && argument.starts_with(DeepLink::scheme))
            options.link = argument;
        else if (!areOptionsOver && argument.starts_with(userOption)) {
            if (const auto problem = setUser(argument.substr(userOption.size()), options))
                return Outcome::failure(*problem);
        } else if (!areOptionsOver && argument == languageOption)
            isLanguageNext = true;
        else if (!areOptionsOver && argument.starts_with(std::string(languageOption) + '=')) {
            if (const auto problem = setLanguage(argument.substr(languageOption.size() + 1), options))
                return Outcome::failure(*problem);
        } else if (!areOptionsOver && argument.starts_with(serviceOption)) {
            if (const auto problem = setService(argument.substr(serviceOption.size()), options))
                return Outcome::failure(*problem);
        } else if (!areOptionsOver && argument.starts_with(samplesOption)) {
            if (const auto problem = setSamples(argument.substr(samplesOption.size()), options))
                return Outcome::failure(*problem);
        } else if (!areOptionsOver && argument.starts_with('-')) {
            if (!setOption(argument, options))
                return Outcome::failure("unknown option \"" + printable(argument) + "\"");
        } else if (options.folder)
            return Outcome::failure("more than one folder");
        else
            options.folder = argument;
    }
    if (isLanguageNext)
        return Outcome::failure("--language takes a code such as de or pt_BR");
    if (options.isScript && options.folder)
        return Outcome::failure("--script plays on a copy of the bundled samples and takes no folder");
    if (options.isScript && options.isWatch)
        return Outcome::failure("--script ends by itself and --watch does not: choose one");
    return Outcome::success(std::move(options));
}

std::string_view helpText()
{
    return R"(fieldbook [OPTION...] [FOLDER] [LINK]

Shows the field reports (*.json files) of FOLDER, and what happens to them, as a live feed.
Without FOLDER it takes a copy of the bundled sample reports, and the response of a station that belongs to them.

On a terminal it asks who you are, unless it knows from the last run, and watches until Ctrl-C. Elsewhere it
shows what is in FOLDER and ends; without FOLDER it plays a script on the copy and ends. Where nobody can
type, everybody is a guest. At the end it prints a summary.

LINK, such as fieldbook://report/4, opens the report of that number at once.

  --station=FILE  take the response of a station from FILE: a JSON object with the members user, settings,
                  reports and announcements, any of which may be missing
  --user=ADDRESS  sign in with this e-mail address
  --guest         show everything before anybody has signed in
  --language CODE show dates in this language, such as de or pt_BR
  --service=URL   send reports there, instead of to a service of its own on this machine, and show those
                  that it tells
  --generate=N[,SEED]
                  make N reports up and write them into FOLDER first; the same ones for the same seed
  --store=FILE    keep reports, settings and what is to be sent in FILE, and begin with what it holds
  --upload        send the reports that were not sent yet, as soon as the folder is read
  --watch         watch until Ctrl-C or a termination request, also without a terminal
  --script        play the script, also on a terminal
  --rx            run on the second of the two stream engines
  -h --help       print this text

Without --store, the store of a folder is a file in $XDG_STATE_HOME/fieldbook, or in
~/.local/state/fieldbook. That of the bundled samples goes away with their copy.

The feed goes to standard output, the log to standard error. In the feed, = is a report as it was at the
end of the last run, + one that was added, ~ one that changed, - one that was removed, ! what cannot be
read, @ what the station says and the service tells, and * what people do. Colours are used on a terminal,
unless the environment variable NO_COLOR is set.

Exit status: 0 after a session, also an interrupted one; 1 if the folder cannot be watched or goes away,
if the store is damaged or cannot be used, if the output cannot be written, or if something of the tree
is left at the end; 2 for wrong arguments.
)";
}

} // namespace fieldbook
