#pragma once

#include "host/command_line/option_meaning.h"
#include "host/command_line/terminal_alerts.h"
#include "host/session/session.h"

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// Something that happened while the job's options were settled.
struct JobStep {
    std::string what;                 ///< "CVMediaType=Glossy", or what was done
    std::string refusal;              ///< why the choice was refused; empty: it was not
    std::vector<std::string> changes; ///< what the rules changed besides: "CVResolution: PlainNormal -> Photo"
};

/// What a job is prepared from.
struct JobSource {
    std::string ppdText;             ///< empty: the queue has no PPD
    std::string ppdName;             ///< as sentences call it
    std::vector<JobOption> kept;     ///< what the user and the system keep for the queue
    std::vector<JobOption> preset{}; ///< chosen like the given ones, unless it holds already; the given ones go before
    std::vector<JobOption> given;    ///< on the command line
    std::filesystem::path bundle;
    std::vector<std::string> languages;        ///< never empty
    TerminalAlerts* alerts = nullptr;          ///< borrowed; never null; outlives the job
    toolkit::UserDefaults* defaults = nullptr; ///< borrowed; outlives the job
};

/// A job's options, settled without a window: the kept options are the starting marks, then the panels are shown, then
/// each choice is made on their controls as a user makes it, in the order of their keys, so that their rules apply. A
/// printer that has none of the panels' options gets its options as they are, without panels, alerts or print settings.
class PreparedJob {
public:
    /// Null where the PPD or the bundle cannot be used; `error` then says why.
    [[nodiscard]] static std::unique_ptr<PreparedJob> prepare(JobSource source, std::string& error);

    [[nodiscard]] bool hasPanels() const { return hasPanels_; }
    /// What was done, in order.
    [[nodiscard]] const std::vector<JobStep>& steps() const { return steps_; }
    /// A sentence for each choice that was refused, left out or replaced, and for each conflict that remains.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }
    /// A sentence for each option that nobody may know; they are sent all the same.
    [[nodiscard]] const std::vector<std::string>& unknownOptions() const { return unknownOptions_; }

    /// Asks the panels; false: they say no.
    bool shouldPrint();
    /// The options to send, ordered by name.
    [[nodiscard]] std::vector<JobOption> options() const;
    /// Each panel's name and its summary, as titles and values in their order.
    using Summary = std::vector<std::pair<std::string, std::vector<std::pair<std::string, std::string>>>>;
    [[nodiscard]] Summary summary();

private:
    PreparedJob() = default;
    bool open(JobSource& source, std::string& error);
    void readOptions(const std::vector<JobOption>& options, const printing::PrinterDescription& description,
                     const std::set<std::string>& installable, std::vector<JobOption>& choices);
    [[nodiscard]] bool holdsAlready(const JobOption& choice) const;
    void choose();
    void chooseOnPanel(CVPrintQualityPDE& panel, const JobOption& choice);
    void chooseOutside(const JobOption& choice);
    void tellWhatDidNotHold();
    void tellConflicts();
    template <typename Action>
    JobStep& step(std::string what, const std::string& chosen, Action&& action);

    std::shared_ptr<Session> session_; ///< null: the queue has no PPD
    bool hasPanels_ = false;
    std::vector<JobOption> keptChoices_, givenChoices_; ///< of the PPD; one for each option
    std::set<std::string> presetsOptions_;              ///< of the given choices those that only the preset makes
    std::vector<JobOption> settings_, attributes_;      ///< one for each name
    std::set<std::string> adjustments_;                 ///< choices that are numbers in the print settings, not marks
    std::vector<JobStep> steps_;
    std::vector<std::string> problems_, unknownOptions_;
};

} // namespace host
