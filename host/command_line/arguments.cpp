#include "host/command_line/arguments.h"

#include "host/command_line/option_meaning.h"
#include "host/jobs/job_text.h"
#include "host/jobs/option_parsing.h"

#include <algorithm>
#include <filesystem>
#include <getopt.h>
#include <iterator>
#include <string_view>

namespace host {
namespace {

constexpr std::string_view kLp = "lp";
constexpr std::string_view kIndefinite = "indefinite", kNoHold = "no-hold";

constexpr int kFile = 1; // what getopt calls an argument that is no option, where the order is kept

enum LongOption {
    kDryRun = 256, // above every letter
    kJson,
    kCheck,
    kExplain,
    kSummary,
    kPpd,
    kTo,
    kBundle,
    kDialog,
    kNoDialog,
    kNoAlerts,
    kStopOnAlert,
    kPreset,
    kPresets,
    kSavePreset,
    kRenamePreset,
    kDeletePreset,
    kSystem,
    kHelp,
    kVersion,
};

constexpr option kLongOptions[] = {{"dry-run", no_argument, nullptr, kDryRun},
                                   {"json", no_argument, nullptr, kJson},
                                   {"check", no_argument, nullptr, kCheck},
                                   {"explain", no_argument, nullptr, kExplain},
                                   {"summary", no_argument, nullptr, kSummary},
                                   {"ppd", required_argument, nullptr, kPpd},
                                   {"to", required_argument, nullptr, kTo},
                                   {"bundle", required_argument, nullptr, kBundle},
                                   {"dialog", no_argument, nullptr, kDialog},
                                   {"no-dialog", no_argument, nullptr, kNoDialog},
                                   {"no-alerts", no_argument, nullptr, kNoAlerts},
                                   {"stop-on-alert", no_argument, nullptr, kStopOnAlert},
                                   {"preset", required_argument, nullptr, kPreset},
                                   {"presets", no_argument, nullptr, kPresets},
                                   {"save-preset", required_argument, nullptr, kSavePreset},
                                   {"rename-preset", required_argument, nullptr, kRenamePreset},
                                   {"delete-preset", required_argument, nullptr, kDeletePreset},
                                   {"system", no_argument, nullptr, kSystem},
                                   {"help", no_argument, nullptr, kHelp},
                                   {"version", no_argument, nullptr, kVersion},
                                   {nullptr, 0, nullptr, 0}};

// A dash first: options may follow files, whatever POSIXLY_CORRECT says. Then a colon: we word what is wrong ourselves.
constexpr const char* kLetters = "-:Ecd:h:i:mn:o:P:q:st:U:H:";

/// An option as it is written: "-d" or "--ppd".
std::string nameOf(int found) {
    const auto* known = std::ranges::find(kLongOptions, found, &option::val);
    return known == std::end(kLongOptions) ? std::string("-") + static_cast<char>(found)
                                           : std::string("--") + known->name;
}

/// "1-3,5,8-": rising, and without overlaps.
bool arePageRanges(std::string_view text) {
    constexpr int kLastPage = 1'000'000'000;
    int least = 1;
    for (bool isLast = false; !isLast;) {
        const std::size_t comma = text.find(',');
        const std::string_view range = text.substr(0, comma);
        const std::size_t dash = range.find('-');
        const auto first = numberBetween(range.substr(0, dash), least, kLastPage);
        isLast = comma == std::string_view::npos;
        const bool isOpen = isLast && dash != std::string_view::npos && dash + 1 == range.size();
        const auto last = dash == std::string_view::npos ? first
                          : isOpen                       ? std::optional(kLastPage)
                                   : numberBetween(range.substr(dash + 1), first.value_or(least), kLastPage);
        if (!first || !last)
            return false;
        least = *last + 1;
        text.remove_prefix(isLast ? text.size() : comma + 1);
    }
    return true;
}

std::string readHold(std::string_view word, Arguments& read) {
    if (word == "hold") {
        read.holdUntil = kIndefinite;
    } else if (word == "resume" || word == "release") {
        read.holdUntil = kNoHold;
    } else if (word == "immediate") {
        read.holdUntil = kNoHold;
        read.priority = kFirstPriority;
    } else if (word == "restart") {
        read.restarts = true;
    } else if (isHoldTime(word)) {
        read.holdUntil = word;
    } else {
        return "A job cannot be held until " + quotedText(word) + ": say hold, resume, immediate, restart, " +
               kHoldTimes + ".";
    }
    return {};
}

/// Empty, or what is wrong with the value.
std::string readLetter(int letter, const std::string& value, Arguments& read) {
    switch (letter) {
    case 'd': {
        const std::size_t slash = value.find('/');
        read.queue = value.substr(0, slash);
        read.instance = slash == std::string::npos ? "" : value.substr(slash + 1);
        return read.queue.empty() ? "The option -d needs a queue's name." : "";
    }
    case 'h':
        read.server = value;
        return {};
    case 'i':
        read.job = value;
        return {};
    case 'n':
        read.copies = numberBetween(value, 1, kMostCopies);
        return read.copies ? "" : "The number of copies must be from 1 to 9999, not " + quotedText(value) + ".";
    case 'o': {
        const std::vector<JobOption> options = parsedOptions(value);
        read.options.insert(read.options.end(), options.begin(), options.end());
        return options.empty() ? "The option -o needs a name and a value, not " + quotedText(value) + "." : "";
    }
    case 'P':
        if (!arePageRanges(value))
            return "The pages must be like 1-3,5,8- and rising, not " + quotedText(value) + ".";
        read.options.push_back({"page-ranges", value});
        return {};
    case 'q':
        read.priority = numberBetween(value, 1, kFirstPriority).value_or(0);
        return read.priority != 0 ? "" : "The priority must be from 1 to 100, not " + quotedText(value) + ".";
    case 't':
        read.title = value;
        return {};
    case 'U':
        read.user = value;
        return {};
    case 'H':
        return readHold(value, read);
    case 'E':
        read.encrypts = true;
        return {};
    case 's':
        read.isSilent = true;
        return {};
    case 'c': // a document is always copied before it is printed,
    case 'm': // and nobody is sent mail
        return {};
    case kPpd:
        read.ppd = value;
        return {};
    case kTo:
        read.folder = value;
        return {};
    case kBundle:
        read.bundle = value;
        return {};
    case kPreset:
        read.preset = value;
        return {};
    case kSavePreset:
        read.savedPreset = value;
        return {};
    case kDeletePreset:
        read.deletedPreset = value;
        return {};
    case kRenamePreset: {
        const std::size_t equals = value.find('=');
        read.renamedPreset = value.substr(0, equals);
        read.newPresetName = equals == std::string::npos ? "" : value.substr(equals + 1);
        return read.renamedPreset.empty() || read.newPresetName.empty()
                   ? "The option --rename-preset needs two names, OLD=NEW, not " + quotedText(value) + "."
                   : "";
    }
    default:
        return {};
    }
}

void readFlag(int flag, Arguments& read) {
    constexpr std::pair<int, bool Arguments::*> kFlags[] = {{kDryRun, &Arguments::dryRun},
                                                            {kJson, &Arguments::json},
                                                            {kCheck, &Arguments::check},
                                                            {kExplain, &Arguments::explain},
                                                            {kSummary, &Arguments::summary},
                                                            {kPresets, &Arguments::listsPresets},
                                                            {kSystem, &Arguments::isForEveryone},
                                                            {kNoAlerts, &Arguments::hidesAlerts},
                                                            {kStopOnAlert, &Arguments::stopsOnAlert},
                                                            {kHelp, &Arguments::showsHelp},
                                                            {kVersion, &Arguments::showsVersion}};
    for (const auto& [value, member] : kFlags)
        if (value == flag)
            read.*member = true;
}

/// What is wrong with the arguments together; empty if nothing is.
std::string contradiction(const Arguments& read, bool dialogWasAskedFor) {
    if (read.json && !read.dryRun && !read.listsPresets)
        return "The option --json goes with --dry-run or --presets.";
    if (dialogWasAskedFor && read.onlyReports())
        return "The option --dialog does not go with --dry-run, --check, --explain or --summary.";
    if (!read.job.empty() && read.onlyReports())
        return "The option -i does not go with --dry-run, --check, --explain or --summary: it changes a job at once.";
    if (read.showsDialog && (read.stopsOnAlert || read.hidesAlerts))
        return std::string("The option ") + (read.stopsOnAlert ? "--stop-on-alert" : "--no-alerts") +
               " goes with --no-dialog: the dialog shows what the panels have to say.";
    if (dialogWasAskedFor && read.managesPresets())
        return "The option --dialog does not go with what lists or changes presets.";
    const int tasks = static_cast<int>(read.onlyReports()) + static_cast<int>(!read.job.empty()) +
                      static_cast<int>(read.listsPresets) + static_cast<int>(!read.savedPreset.empty()) +
                      static_cast<int>(!read.renamedPreset.empty()) + static_cast<int>(!read.deletedPreset.empty());
    if (read.managesPresets() && tasks > 1)
        return "What lists or changes presets goes alone: one of --presets, --save-preset, --rename-preset and "
               "--delete-preset.";
    if (read.managesPresets() && !read.files.empty())
        return "What lists or changes presets prints nothing: it takes no files.";
    if (read.isForEveryone && !read.changesPresets())
        return "The option --system goes with --save-preset, --rename-preset or --delete-preset.";
    if (dialogWasAskedFor && !read.job.empty())
        return "The option --dialog does not go with -i.";
    if (!read.job.empty() && !read.files.empty())
        return "The option -i changes a job that was sent already: it takes no files.";
    if (read.restarts && read.job.empty())
        return "\"-H restart\" needs a job: name it with -i.";
    return {};
}

} // namespace

Arguments readArguments(const std::vector<std::string>& arguments, std::string& error) {
    Arguments read;
    std::vector<std::string> copies = arguments;
    if (copies.empty())
        copies.emplace_back("corvane-print");
    read.program = std::filesystem::path(copies.front()).filename() == kLp ? kLp : "corvane-print";
    std::vector<char*> pointers(copies.size() + 1, nullptr);
    std::ranges::transform(copies, pointers.begin(), [](std::string& each) { return each.data(); });
    const int count = static_cast<int>(copies.size());

    std::optional<bool> dialog;
    optind = 0; // begin anew, also where it was used before in this process
    opterr = 0;
    for (int found;
         error.empty() && (found = getopt_long(count, pointers.data(), kLetters, kLongOptions, nullptr)) != -1;) {
        if (found == '?' || found == ':') {
            const bool isLetter = optopt != 0 && optopt < kDryRun;
            const std::string given = isLetter ? std::string("-") + static_cast<char>(optopt)
                                               : std::string(pointers[static_cast<std::size_t>(optind) - 1]);
            error = found == '?' ? "There is no option " + quotedText(given) + "; see --help."
                                 : "The option " + given + " needs a value; see --help.";
        } else if (found == kFile) {
            read.files.emplace_back(optarg);
        } else if (found == kDialog || found == kNoDialog) {
            dialog = found == kDialog;
        } else {
            readFlag(found, read);
            // Only a title may be empty: then it is the document's name.
            error = optarg != nullptr && *optarg == '\0' && found != 't'
                        ? "The option " + nameOf(found) + " needs a value that is not empty; see --help."
                        : readLetter(found, optarg == nullptr ? "" : optarg, read);
        }
    }
    if (!error.empty())
        return read;
    for (int index = optind; index < count; ++index) // after "--"
        read.files.emplace_back(pointers[static_cast<std::size_t>(index)]);
    read.showsDialog = dialog.value_or(read.program != kLp) && read.prints() && read.job.empty();
    error = contradiction(read, dialog.value_or(false));
    return read;
}

std::string usage(const std::string& program) {
    return "Usage: " + program +
           " [OPTION]... [FILE]...\n"
           "Prints files, or standard input (\"-\", or no file at all), through the printer's panels.\n"
           "\n"
           "As lp:\n"
           "  -d QUEUE[/INSTANCE]  print on this queue\n"
           "  -o NAME=VALUE        choose; may be given again\n"
           "  -n COPIES            print so many copies\n"
           "  -P PAGES             print these pages, for example 1-3,5\n"
           "  -t TITLE             the job's title\n"
           "  -q PRIORITY          1 (last) to 100 (first)\n"
           "  -H WHEN              hold the job: hold, resume, immediate, HH:MM (UTC), or a server's word\n"
           "  -i JOB               change a job that was sent: -n, -q, -H (also restart), -t and -o\n"
           "  -h SERVER[:PORT]     use this print server\n"
           "  -U USER              print as this user\n"
           "  -E                   encrypt the connection\n"
           "  -s                   do not tell the job's number\n"
           "  -c, -m               accepted, without effect\n"
           "\n"
           "The panels:\n"
           "  --dialog             show the print dialog\n"
           "  --no-dialog          show none; so it is when called as lp\n"
           "  --no-alerts          do not tell what the panels have to say before printing\n"
           "  --stop-on-alert      do not print if they have something to say\n"
           "  --ppd FILE           use this PPD instead of the queue's\n"
           "  --to FOLDER          print to a folder: a copy of each document, and a ticket\n"
           "  --bundle PATH        use this plug-in bundle\n"
           "\n"
           "Presets, named sets of choices for a queue:\n"
           "  --preset NAME        choose what the preset holds, then what -o says\n"
           "  --presets [--json]   list them\n"
           "  --save-preset NAME   keep what -d and -o choose under this name\n"
           "  --rename-preset OLD=NEW\n"
           "                       give a preset another name\n"
           "  --delete-preset NAME delete it\n"
           "  --system             change those of every user\n"
           "\n"
           "Without printing:\n"
           "  --dry-run [--json]   show the options that would be sent\n"
           "  --check              tell each conflict, unknown option and unknown choice; status 4 if there is one\n"
           "  --explain            tell what the rules changed, and why something was refused\n"
           "  --summary            show the panels' summary\n"
           "  --help, --version    show this help, or the version\n"
           "\n"
           "Exit status: 0 done, 1 not printed, 2 wrong usage, 3 stopped by an alert, 4 --check found something,\n"
           "5 the dialog cannot be shown.\n";
}

} // namespace host
