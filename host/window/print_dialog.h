#pragma once

#include "host/command_line/dialog_request.h"
#include "host/window/form_binder.h"
#include "host/window/general_page.h"
#include "host/window/help_viewer.h"
#include "host/window/job_sender.h"
#include "host/window/password_question.h"
#include "host/window/preset_menu.h"
#include "host/window/printers.h"
#include "host/window/remembered.h"
#include "host/window/session_starter.h"
#include "host/window/summary_page.h"
#include "host/window/user_actions.h"
#include "host/window/window_alerts.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <set>
#include <vector>

class QLabel;
class QPushButton;
class QTabWidget;

namespace host {

/// The print dialog: the host's own page, the panels, and the summary. It draws models and answers alerts; what may be
/// chosen, and what follows from it, is decided elsewhere.
class PrintDialog : public QDialog {
public:
    struct Settings {
        std::vector<std::string> languages;            ///< never empty
        toolkit::UserDefaults* userDefaults = nullptr; ///< borrowed
        std::vector<Printer> printers;                 ///< known beforehand
        /// Without a PPD of the request's, no printer is chosen before the queues are known: what is meant for a queue
        /// goes nowhere else.
        bool looksForQueues = true;
        Submission submission = submit;
        StatusReading status = readStatus;
        JobCancelling cancelling = cancelSent;
        JobAuthentication authentication = authenticateSent;
    };

    PrintDialog(DialogRequest request, Settings settings);
    ~PrintDialog() override;

    /// The session of the chosen printer; null where it cannot be used.
    [[nodiscard]] Session* session() const { return session_.get(); }
    [[nodiscard]] QString message() const;
    /// What was printed, in order.
    [[nodiscard]] const std::vector<JobResult>& printed() const { return printed_; }
    /// Where it was printed to.
    [[nodiscard]] const Destination& destination() const { return destination_; }

    /// Asks the panels, then sends the documents. The dialog ends where all of them were sent.
    void print();
    void reject() override;
    void done(int result) override;
    /// Takes back the step that the message line tells of; nothing where it tells of none.
    void undo();
    /// Goes back to the PPD's defaults.
    void useDefaults();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// A panel and the tab that it stands on.
    struct PanelTab {
        CVPrintQualityPDE* panel = nullptr;
        QWidget* page = nullptr;
        std::unique_ptr<FormBinder> binder{}; ///< null until the panel was shown first
        bool isPopulated = false;             ///< its controls were filled
        bool isWatched = false;               ///< a change of its size waits to be told
    };

    // Building.
    void build();
    [[nodiscard]] QWidget* makeMessageLine();
    [[nodiscard]] QWidget* makeButtons();
    void giveTabTitles();

    // Printers.
    void addPrinters(const std::vector<Printer>& printers);
    void lookForQueues();
    void offerQueues(const PrinterSearch::Found& found);
    void choosePrinter(int index);
    void beginWithPpd(const FetchedPpd& ppd, const StartChoices& choices);
    void userChoosesPrinter(int index);
    [[nodiscard]] StartChoices choicesSoFar() const;
    [[nodiscard]] StartedSession start(const Printer& printer, const StartChoices& choices);
    [[nodiscard]] SessionSurroundings surroundings();
    void openSession(StartedSession started);
    /// What was given is told under these words; empty: as options that were given.
    void beginAnew(const Printer& printer, const StartChoices& choices, const QString& words = {});
    void endSession();

    // Panels and pages.
    void populate(PanelTab& tab);
    void showTab(int index);
    void focusControl();
    void leaveTab(int index);
    [[nodiscard]] PanelTab* tabAt(int index);
    void showSummary();
    void savePopulatedPanels();
    void showPanelsAnew();
    void restorePanels();
    void chooseOnPanels(const std::vector<printing::MarkedChoice>& choices, const std::set<std::string>& unlessHeld);

    // The host's own choices.
    void userChoosesPaper(const printing::Paper& paper, const printing::MarkedChoice& cause);
    void userMarks(const std::string& option, const std::string& choice);
    void userChoosesColorMatching(const std::string& mode);
    void userChoosesScaling(const std::string& pageSize);
    void userChoosesToRemember(bool remembers);
    void act(const std::function<void()>& action, const Cause& cause = {});

    // Presets.
    [[nodiscard]] bool isPresetMeantFor(const Printer& printer) const;
    [[nodiscard]] const Printer* foundPreset() const;
    [[nodiscard]] bool awaitsPreset(const Printer& printer) const;
    void applyGivenPreset();
    void applyPreset(const Preset& preset, const std::vector<JobOption>& given = {});
    /// nullopt where they cannot be kept; the user has been told why.
    [[nodiscard]] std::optional<std::vector<JobOption>> choicesForPreset();

    // The window.
    void tell(const QString& message, bool canUndo = false);
    void fitLater();
    void fit();
    void refreshLater();
    void showPanelHelp();
    void openHelpPage(const std::string& anchor, const std::string& book);
    void showWarningsAgain();

    // Printing.
    /// nullopt where they are none; the user has been told so.
    [[nodiscard]] std::optional<std::string> checkedPages();
    [[nodiscard]] std::vector<JobOption> jobOptions(const std::string& pages) const;
    [[nodiscard]] std::vector<DocumentsJob> jobs(const std::string& pages) const;
    void tellOutcome(const SendOutcome& outcome);

    DialogRequest request_;
    const JobRequest given_; // priority and holding time as they were given; those of the request may be a preset's
    Settings settings_;
    Language language_;
    WindowAlerts alerts_;
    UserActions actions_;
    std::vector<Printer> printers_;
    NamedDefault wanted_;                   // the queue that was named
    int printer_ = -1;                      // none: a queue is waited for, or was not found
    int fetches_ = 0;                       // of PPDs; the last one counts
    std::optional<SessionParts> readAhead_; // of the first printer, until its session begins
    std::shared_ptr<Session> session_;
    std::optional<StartChoices> carried_; // what the user had chosen when the last session ended
    std::vector<JobOption> attributes_;   // of the jobs, beside what the session holds
    JobRequest keptFields_;               // of the jobs, as the queue keeps them
    std::vector<PanelTab> panelTabs_;
    int shownTab_ = -1;
    GeneralPage* generalPage_ = nullptr;
    PresetMenu* presetMenu_ = nullptr;
    SummaryPage* summaryPage_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    Remembered remembered_;
    QWidget* messageLine_ = nullptr;
    QLabel* message_ = nullptr;
    QPushButton* undoButton_ = nullptr;
    QPushButton* printButton_ = nullptr;
    QPointer<HelpViewer> helpViewer_;
    QString takenLetters_;      // mnemonics of buttons and tabs
    bool userHasBegun_ = false; // then choices are taken along to another printer
    bool fitWaits_ = false;
    int neededHeight_ = 0; // of the window at the last fit
    std::vector<JobResult> printed_;
    Destination destination_;
    PasswordQuestions passwords_;
    PrinterSearch search_;
};

} // namespace host
