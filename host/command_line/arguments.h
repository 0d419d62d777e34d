#pragma once

#include "host/jobs/job.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// A command line, read.
struct Arguments {
    std::string program;            ///< as it was called: "corvane-print" or "lp"
    std::string queue, instance;    ///< empty: the default
    std::string server;             ///< see QueueAddress::server
    std::string user;               ///< empty: this one
    std::string job;                ///< a job to change instead of printing: "Queue-12" or "12"
    std::string title;              ///< empty: the document's name
    std::string holdUntil;          ///< see JobRequest::holdUntil
    std::vector<JobOption> options; ///< in the order in which they were given
    std::vector<std::string> files; ///< "-" is standard input; none: standard input too
    std::optional<int> copies;
    int priority = 0; ///< see JobRequest::priority
    bool encrypts = false;
    bool isSilent = false; ///< no "request id is ..."
    bool restarts = false; ///< the job to change is printed again

    bool showsDialog = false;
    std::string preset;      ///< of the queue; its choices are made before the options
    std::string savedPreset; ///< the name under which the settled options are kept, instead of printing
    std::string deletedPreset;
    std::string renamedPreset, newPresetName;
    bool listsPresets = false;
    bool isForEveryone = false; ///< the presets are the system's, not the user's

    bool dryRun = false, json = false, check = false, explain = false, summary = false;
    bool hidesAlerts = false, stopsOnAlert = false;
    bool showsHelp = false, showsVersion = false;
    std::string ppd;    ///< a file that stands for the queue's PPD
    std::string folder; ///< print to it, instead of a queue
    std::string bundle; ///< empty: the program's own

    /// Only tells what would be printed.
    [[nodiscard]] bool onlyReports() const { return dryRun || check || explain || summary; }
    /// Changes or lists presets.
    [[nodiscard]] bool managesPresets() const { return listsPresets || changesPresets(); }
    [[nodiscard]] bool changesPresets() const {
        return !savedPreset.empty() || !deletedPreset.empty() || !renamedPreset.empty();
    }
    [[nodiscard]] bool prints() const { return !onlyReports() && !managesPresets(); }
};

/// Reads the arguments, the first of which is the program's own name: called as "lp" it shows no dialog unless it is
/// asked for one. `error` is empty, or one sentence.
[[nodiscard]] Arguments readArguments(const std::vector<std::string>& arguments, std::string& error);

/// What --help shows.
[[nodiscard]] std::string usage(const std::string& program);

} // namespace host
