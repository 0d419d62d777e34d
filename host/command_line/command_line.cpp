#include "host/command_line/command_line.h"

#include "host/command_line/arguments.h"
#include "host/command_line/dialog_module.h"
#include "host/command_line/prepared_job.h"
#include "host/command_line/reports.h"
#include "host/command_line/spooled_input.h"
#include "host/jobs/document.h"
#include "host/jobs/folder_submission.h"
#include "host/jobs/job_changes.h"
#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/jobs/presets.h"
#include "host/jobs/queue_submission.h"
#include "host/jobs/queues.h"
#include "host/session/plug_in.h"
#include "host/session/program_files.h"
#include "toolkit/preferred_languages.h"
#include "toolkit/user_defaults.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <list>
#include <optional>
#include <unistd.h>

namespace host {
namespace {

constexpr const char* kStandardInput = "-";
constexpr const char* kStandardInputTitle = "(stdin)";
constexpr int kUnchangedCopies = 0;

/// The user's preferences as they stand. What would be kept is kept as long as the object: a print without a window
/// changes no preference.
class ReadOnlyDefaults final : public toolkit::UserDefaults {
public:
    std::optional<toolkit::ValueMap> persistentDomainForName(std::string_view name) override {
        if (auto own = written_.persistentDomainForName(name))
            return own;
        return file_ ? file_->persistentDomainForName(name) : std::nullopt;
    }
    void setPersistentDomainForName(toolkit::ValueMap domain, std::string_view name) override {
        written_.setPersistentDomainForName(std::move(domain), name);
    }
    bool synchronize() override { return true; }

private:
    static std::optional<toolkit::FileUserDefaults> openFile() {
        const auto folder = toolkit::FileUserDefaults::userFolder();
        return folder ? std::optional<toolkit::FileUserDefaults>(std::in_place, *folder) : std::nullopt;
    }

    std::optional<toolkit::FileUserDefaults> file_ = openFile();
    toolkit::MemoryUserDefaults written_;
};

int failWith(const std::string& program, int status, const std::string& sentence) {
    std::cerr << program << ": " << sentence << std::endl;
    return status;
}

/// The exit status for what was written to standard output. `done` is a sentence on what is done all the same.
int finishOutput(const std::string& program, const std::string& done = "") {
    if (std::cout.flush())
        return kExitDone;
    return failWith(program, kExitNotPrinted,
                    done + (done.empty() ? "" : " ") +
                        "Standard output cannot be written to its end: check the disk or the program that takes it.");
}

/// A run of the command.
class PrintCommand {
public:
    explicit PrintCommand(Arguments arguments) : arguments_(std::move(arguments)) {}

    int run();

private:
    int fail(int status, const std::string& sentence) const { return failWith(arguments_.program, status, sentence); }
    void note(const std::string& sentence) const { fail(kExitDone, sentence); }

    [[nodiscard]] std::filesystem::path bundle() const {
        return arguments_.bundle.empty() ? pathOfPlugInBundle() : std::filesystem::path(arguments_.bundle);
    }
    [[nodiscard]] std::string titleOfInput() const;
    [[nodiscard]] std::string refusalForFiles() const;
    [[nodiscard]] std::string spoolDocuments();
    [[nodiscard]] std::string findQueue(const PasswordPrompt& passwords = {});
    [[nodiscard]] std::string takePreset(const QueueList& list);
    [[nodiscard]] std::string readPpd();
    [[nodiscard]] std::string destination() const;
    void putOwnFields();
    int changeSentJob();
    int managePresets();
    int keepPreset(const PreparedJob& job);
    int runDialog();
    int prepareAndPrint();
    int report(PreparedJob& job);
    int submit();

    Arguments arguments_;
    SpooledInput input_;
    std::list<SpooledInput> pipes_;
    std::vector<std::string> documents_;
    JobRequest request_;
    JobSource source_;
    ReadOnlyDefaults defaults_;
    std::vector<std::string> complaints_; ///< about what was given; the job is printed all the same
};

/// The title of a job that was given none.
std::string PrintCommand::titleOfInput() const {
    return arguments_.files.empty() || arguments_.files.front() == kStandardInput
               ? kStandardInputTitle
               : documentName(arguments_.files.front());
}

/// Empty, or why a file that was named cannot be printed. Whether a pipe can is known when it was read.
std::string PrintCommand::refusalForFiles() const {
    for (const std::string& file : arguments_.files) {
        std::error_code unreadable; // is told when it is opened
        if (file == kStandardInput || std::filesystem::is_fifo(file, unreadable))
            continue;
        if (std::string failure = Document().open(file); !failure.empty())
            return failure;
    }
    return {};
}

/// Empty, or why there is nothing to print.
std::string PrintCommand::spoolDocuments() {
    if (arguments_.files.empty())
        arguments_.files.emplace_back(kStandardInput);
    for (const std::string& file : arguments_.files) {
        std::error_code unreadable;
        if (file == kStandardInput) {
            if (input_.path().empty())
                if (std::string failure = input_.readFrom(STDIN_FILENO, "Standard input"); !failure.empty())
                    return failure;
            documents_.push_back(input_.path());
        } else if (std::filesystem::is_fifo(file, unreadable)) {
            if (std::string failure = pipes_.emplace_back().readPipe(file); !failure.empty())
                return failure;
            documents_.push_back(pipes_.back().path());
        } else {
            documents_.push_back(file);
        }
    }
    if (request_.title.empty() && documents_.front() != arguments_.files.front())
        request_.title = titleOfInput();
    request_.documentPath = documents_.front();
    return {};
}

/// Finds the queue and what is kept for it. Empty, or why there is none.
std::string PrintCommand::findQueue(const PasswordPrompt& passwords) {
    const QueueList list = listQueues(arguments_.server, {}, passwords);
    if (!list.error.empty())
        return list.error;
    const auto named = [&](const Queue& each) {
        return arguments_.queue.empty() ? each.isDefault
                                        : each.name == arguments_.queue && each.instance == arguments_.instance;
    };
    const auto found = std::ranges::find_if(list.queues, named);
    if (found != list.queues.end()) {
        arguments_.queue = found->name;
        arguments_.instance = found->instance;
        source_.kept = found->options;
        return arguments_.preset.empty() ? "" : takePreset(list);
    }
    if (arguments_.queue.empty()) {
        const NamedDefault named = defaultOfEnvironment();
        return named.variable.empty()
                   ? "There is no default queue: name one by -d."
                   : "There is no queue " +
                         quotedText(named.queue + (named.instance.empty() ? "" : "/" + named.instance)) + ", which " +
                         named.variable + " names: correct it, or name another queue by -d.";
    }
    const bool queueExists = std::ranges::find(list.queues, arguments_.queue, &Queue::name) != list.queues.end();
    return queueExists ? "The queue " + quotedText(arguments_.queue) + " has no instance " +
                             quotedText(arguments_.instance) + ": see --presets, or name the queue alone."
                       : "There is no queue " + quotedText(arguments_.queue) + ": name another one by -d.";
}

/// Empty, or why the queue has no such preset.
std::string PrintCommand::takePreset(const QueueList& list) {
    const auto found = std::ranges::find_if(list.queues, [&](const Queue& each) {
        return each.name == arguments_.queue && each.instance == arguments_.preset;
    });
    if (found == list.queues.end())
        return "The queue " + quotedText(arguments_.queue) + " has no preset " + quotedText(arguments_.preset) +
               ": see --presets.";
    source_.preset = found->options;
    return {};
}

/// Reads the PPD that is used. Empty, or why it cannot be read.
std::string PrintCommand::readPpd() {
    if (arguments_.ppd.empty()) {
        FetchedPpd fetched = fetchPpd({.server = arguments_.server, .queue = arguments_.queue});
        source_.ppdText = std::move(fetched.text);
        source_.ppdName = "The PPD of the queue " + quotedText(arguments_.queue);
        return fetched.error;
    }
    std::string error;
    source_.ppdText = printing::PrinterDescription::readFile(arguments_.ppd, error).value_or("");
    source_.ppdName = "The PPD " + quotedText(arguments_.ppd);
    if (error.empty() && source_.ppdText.empty())
        error = source_.ppdName + " cannot be used: it is empty.";
    return error;
}

std::string PrintCommand::destination() const {
    if (!arguments_.folder.empty())
        return arguments_.folder;
    return arguments_.queue + (arguments_.instance.empty() ? "" : "/" + arguments_.instance);
}

int PrintCommand::run() {
    // For every thread of this process, that of a dialog too.
    if (!arguments_.user.empty())
        ::setenv("CUPS_USER", arguments_.user.c_str(), 1);
    if (arguments_.encrypts)
        ::setenv("CUPS_ENCRYPTION", "Required", 1);
    if (!arguments_.job.empty())
        return changeSentJob();
    if (arguments_.managesPresets() && arguments_.savedPreset.empty())
        return managePresets();
    return arguments_.showsDialog ? runDialog() : prepareAndPrint();
}

int PrintCommand::managePresets() {
    if (arguments_.listsPresets) {
        QueueList list = listQueues(arguments_.server);
        if (!list.error.empty())
            return fail(kExitNotPrinted, list.error);
        if (!arguments_.queue.empty())
            std::erase_if(list.queues, [&](const Queue& each) { return each.name != arguments_.queue; });
        if (!arguments_.queue.empty() && list.queues.empty())
            return fail(kExitNotPrinted, "There is no queue " + quotedText(arguments_.queue) +
                                             ": name another one by -d, or none to list the presets of all.");
        (arguments_.json ? writePresetsAsJson : writePresets)(std::cout, list.queues);
        return finishOutput(arguments_.program);
    }
    if (arguments_.queue.empty()) // a queue that is named need not be there any more
        if (const std::string error = findQueue(); !error.empty())
            return fail(kExitNotPrinted, error);
    const bool isRenaming = !arguments_.renamedPreset.empty();
    const PresetName preset{.queue = arguments_.queue,
                            .name = isRenaming ? arguments_.renamedPreset : arguments_.deletedPreset,
                            .owner = arguments_.isForEveryone ? PresetOwner::Everyone : PresetOwner::User};
    const std::string failure = isRenaming ? renamePreset(preset, arguments_.newPresetName) : deletePreset(preset);
    return failure.empty() ? kExitDone : fail(kExitNotPrinted, failure);
}

int PrintCommand::keepPreset(const PreparedJob& job) {
    std::vector<JobOption> options = job.options();
    if (request_.copies != 1)
        options.push_back({"copies", std::to_string(request_.copies)});
    const std::string failure =
        savePreset({.queue = arguments_.queue,
                    .name = arguments_.savedPreset,
                    .owner = arguments_.isForEveryone ? PresetOwner::Everyone : PresetOwner::User},
                   options);
    if (!failure.empty())
        return fail(kExitNotPrinted, failure);
    if (!arguments_.isSilent)
        std::cout << "preset is " << arguments_.queue << "/" << arguments_.savedPreset << std::endl;
    return finishOutput(arguments_.program, "The preset was kept.");
}

int PrintCommand::changeSentJob() {
    request_.copies = kUnchangedCopies;
    std::vector<JobOption> options = arguments_.options;
    const std::vector<std::string> complaints = takeJobFields(options, request_);
    if (!complaints.empty())
        return fail(kExitNotPrinted, complaints.front());
    putOwnFields();
    const JobChange change{.job = arguments_.job,
                           .title = request_.title,
                           .copies =
                               request_.copies == kUnchangedCopies ? std::nullopt : std::optional(request_.copies),
                           .priority = request_.priority,
                           .holdUntil = request_.holdUntil,
                           .restarts = arguments_.restarts,
                           .options = options};
    const std::string failure = changeJob(arguments_.server, change);
    return failure.empty() ? kExitDone : fail(kExitNotPrinted, failure);
}

/// What has a letter of its own goes before the same option's general form.
void PrintCommand::putOwnFields() {
    if (arguments_.copies)
        request_.copies = *arguments_.copies;
    if (arguments_.priority != 0)
        request_.priority = arguments_.priority;
    if (!arguments_.holdUntil.empty())
        request_.holdUntil = arguments_.holdUntil;
    if (!arguments_.title.empty())
        request_.title = arguments_.title;
}

int PrintCommand::runDialog() {
    std::string error;
    DialogEntry* const dialog = loadDialog(error);
    if (dialog == nullptr)
        return fail(kExitNoDialog, error);
    if (error = refusalForFiles(); !error.empty())
        return fail(kExitNotPrinted, error);
    bool isPasswordWanted = false; // the window asks for it
    if (!arguments_.preset.empty())
        error = findQueue([&](const PasswordQuestion&) {
            isPasswordWanted = true;
            return std::nullopt;
        });
    const bool looksForPreset = isPasswordWanted && arguments_.ppd.empty();
    if (!error.empty() && !looksForPreset)
        return fail(kExitNotPrinted, error);
    std::vector<JobOption> choices = arguments_.options;
    request_.copies = 0; // as long as none are given
    for (const std::string& complaint : takeJobFields(choices, request_))
        note(complaint);
    putOwnFields();
    if (arguments_.folder.empty()) // which takes any option
        if (error = refusalForOptions(choices); !error.empty())
            return fail(kExitNotPrinted, error);
    const bool hasNoDocument = arguments_.files.empty() && ::isatty(STDIN_FILENO) == 1; // the dialog shows none then
    if (!hasNoDocument)
        if (error = spoolDocuments(); !error.empty())
            return fail(kExitNotPrinted, error);
    return dialog({.documents = documents_,
                   .title = request_.title,
                   .printer = arguments_.queue,
                   .instance = arguments_.instance,
                   .server = arguments_.server,
                   .ppd = arguments_.ppd,
                   .folder = arguments_.folder,
                   .choices = choices,
                   .preset = arguments_.preset,
                   .presetChoices = source_.preset,
                   .looksForPreset = looksForPreset,
                   .copies = request_.copies,
                   .priority = request_.priority,
                   .holdUntil = request_.holdUntil,
                   .isSilent = arguments_.isSilent,
                   .bundle = bundle()});
}

int PrintCommand::prepareAndPrint() {
    source_.languages = toolkit::preferredLanguages();
    source_.bundle = bundle();
    source_.defaults = &defaults_;
    const bool needsQueue = arguments_.ppd.empty() || !arguments_.queue.empty() || !arguments_.preset.empty() ||
                            (arguments_.folder.empty() && !arguments_.onlyReports());
    // What was typed is told before a server is asked for anything.
    std::string error = arguments_.prints() ? refusalForFiles() : "";
    if (error.empty() && needsQueue)
        error = findQueue();
    if (error.empty())
        error = readPpd();
    if (!error.empty())
        return fail(kExitNotPrinted, error);

    source_.given = arguments_.options;
    for (auto* list : {&source_.kept, &source_.preset, &source_.given}) // a later one goes before
        for (std::string& complaint : takeJobFields(*list, request_))
            complaints_.push_back(std::move(complaint));
    putOwnFields();

    if (arguments_.prints())
        if (error = spoolDocuments(); !error.empty())
            return fail(kExitNotPrinted, error);
    TerminalAlerts alerts(arguments_.hidesAlerts ? nullptr : &std::cerr, arguments_.program,
                          arguments_.stopsOnAlert ? TerminalAlerts::Answer::Stop : TerminalAlerts::Answer::GoOn);
    source_.alerts = &alerts;
    const auto job = PreparedJob::prepare(std::move(source_), error);
    if (job == nullptr)
        return fail(kExitNotPrinted, error);
    const std::vector<std::string>& problems = job->problems();
    complaints_.insert(complaints_.end(), problems.begin(), problems.end());
    // A folder takes any option.
    const std::string refusal = arguments_.folder.empty() ? refusalForOptions(job->options()) : "";
    if (arguments_.onlyReports() && !refusal.empty())
        complaints_.push_back(refusal);
    if (!arguments_.check) // which tells them itself
        for (const std::string& complaint : complaints_)
            note(complaint);
    if (arguments_.onlyReports() && !arguments_.dryRun && !arguments_.explain)
        return report(*job);
    if (!arguments_.savedPreset.empty())
        return keepPreset(*job);
    if (arguments_.prints() && !refusal.empty())
        return fail(kExitNotPrinted, refusal);
    const bool prints = job->shouldPrint() && !(arguments_.stopsOnAlert && alerts.wasShown());
    request_.options = job->options();
    if (arguments_.onlyReports()) {
        const int status = report(*job);
        return status == kExitDone && !prints ? fail(kExitStoppedByAlert, "The job would not be printed.") : status;
    }
    if (!prints)
        return fail(kExitStoppedByAlert, "The job was not printed, because of what the panels say.");
    return submit();
}

int PrintCommand::report(PreparedJob& job) {
    if (arguments_.explain)
        writeExplanation(std::cout, job);
    if (arguments_.summary)
        writeSummary(std::cout, job);
    if (arguments_.dryRun) {
        const PlannedJob planned{.destination = destination(),
                                 .title = request_.title.empty() ? titleOfInput()
                                                                 : plainText(request_.title, kMaximumTitleBytes),
                                 .copies = request_.copies,
                                 .options = request_.options};
        (arguments_.json ? writeOptionsAsJson : writeOptions)(std::cout, planned);
    }
    const int status = finishOutput(arguments_.program);
    if (!arguments_.check || status != kExitDone)
        return status;
    const std::vector<std::string>& unknown = job.unknownOptions();
    complaints_.insert(complaints_.end(), unknown.begin(), unknown.end());
    for (const std::string& complaint : complaints_)
        note(complaint);
    return complaints_.empty() ? kExitDone : kExitCheckFailed;
}

int PrintCommand::submit() {
    if (!arguments_.folder.empty()) {
        for (const std::string& document : documents_) {
            request_.documentPath = document;
            const JobResult result = submitToFolder(arguments_.folder, request_);
            if (!result.ok)
                return fail(kExitNotPrinted, result.error);
            if (!arguments_.isSilent)
                std::cout << "ticket is " << result.path << std::endl;
        }
        return finishOutput(arguments_.program, "The job was printed to the folder.");
    }
    const JobResult result =
        submitDocumentsToQueue({.server = arguments_.server, .queue = arguments_.queue}, request_, documents_);
    if (!result.ok)
        return fail(kExitNotPrinted, result.error);
    if (!arguments_.isSilent)
        std::cout << "request id is " << arguments_.queue << "-" << result.jobId << " (" << documents_.size()
                  << " file(s))" << std::endl;
    if (!result.note.empty())
        note(result.note);
    return finishOutput(arguments_.program,
                        "The job " + arguments_.queue + "-" + std::to_string(result.jobId) + " was sent.");
}

} // namespace

int runPrintCommand(const std::vector<std::string>& given, const std::string& version) {
    std::string error;
    Arguments arguments = readArguments(given, error);
    if (!error.empty()) {
        return failWith(arguments.program, kExitUsage, error);
    }
    if (arguments.showsHelp) {
        std::cout << usage(arguments.program);
        return finishOutput(arguments.program);
    }
    if (arguments.showsVersion) {
        std::cout << arguments.program << " " << version << "\n";
        return finishOutput(arguments.program);
    }
    return PrintCommand(std::move(arguments)).run();
}

} // namespace host
