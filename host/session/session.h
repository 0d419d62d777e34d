#pragma once

#include "framework/host_callback.h"
#include "host/jobs/job.h"
#include "host/session/help_books.h"
#include "host/session/plug_in.h"

#include "toolkit/notification_center.h"
#include "toolkit/text_measuring.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host {

/// Shows the panels' alerts to the user and brings the answers. A host with a window and one without differ in this.
class AlertPresenter {
public:
    virtual ~AlertPresenter() = default;
    virtual toolkit::AlertAnswer presentAlert(const toolkit::Alert& alert, bool asSheet) = 0;
    virtual void presentPanel(const toolkit::AlertPanel& panel) = 0;
    /// Shows the window and lets the user press one of its buttons, whose action ends the modal run.
    virtual void presentWindow(toolkit::Window& window) = 0;
    /// Opens a registered help book; nothing to be done where there is nobody to read it.
    virtual void openHelp(std::string_view anchor, std::string_view book) = 0;
};

/// What a session is opened with.
struct SessionOptions {
    std::shared_ptr<PlugIn> plugIn;                            ///< never null
    std::unique_ptr<printing::PrinterDescription> description; ///< never null; marked as the session shall start
    std::optional<printing::PrintSettings> settings = printing::PrintSettings(); ///< none: the callback gives none
    std::optional<printing::PageFormat> pageFormat; ///< none: the paper of the marked page size
    toolkit::BundleView bundleView;                 ///< its languages are the session's, never empty
    toolkit::UserDefaults* userDefaults = nullptr;  ///< borrowed; outlives the session
    std::optional<double> windowHeight = 800;       ///< points; none: there is no key window
    std::vector<std::string> lacks;                 ///< operations that the Host Callback does not respond to
    std::string panelType = std::string(CVInkQuality12PDEPlugIn::kPrintDialogPanelType);
    AlertPresenter* presenter = nullptr; ///< borrowed; never null; outlives the session
    /// Looks at each request of a panel before anything else does: answers a reason to refuse it, or raises an
    /// exception. May be empty.
    std::function<std::optional<std::string>(const std::string& option, const std::string& choice)> askFilter = {};
};

/// One request of a panel to mark a choice.
struct AskedMark {
    std::string option, choice;
    bool accepted = false;
};

/// One refused request, with the reason as a user reads it.
struct RefusedMark {
    std::string option, choice;
    std::vector<printing::MarkedChoice> with; ///< the marked choices that exclude it
    std::string reason;
};

/// What happened since the session was opened, or since it was looked at last.
struct SessionRecord {
    std::vector<AskedMark> asked;
    std::vector<RefusedMark> refused;
    std::vector<toolkit::Notification> posted; ///< by panels; the senders are not valid any more
    int resized = 0;                           ///< how often a panel's view changed its size
};

/// One print dialog: the printer's PPD and its marks, the job's print settings and paper, and the panels of the
/// bundle. It is the Host Callback of its panels and the application that they run in. Use from one thread.
class Session final : public framework::HostCallback, public toolkit::Application {
public:
    /// Makes the panels and sends them nothing more. Null where the bundle cannot be used; `error` says why.
    static std::shared_ptr<Session> open(SessionOptions options, std::string& error);
    /// Closes the key window and releases the panels.
    ~Session() override;

    [[nodiscard]] const framework::PanelList& panels() const { return panels_; }
    [[nodiscard]] CVInkQuality12PDEPlugIn& principalObject() { return *principal_; }
    [[nodiscard]] const framework::PanelInspection* inspection() const { return options_.plugIn->inspection(); }
    [[nodiscard]] const std::vector<std::string>& languages() const { return options_.bundleView.languages; }
    [[nodiscard]] const HelpBooks& helpBooks() const { return helpBooks_; }

    // Showing panels. A panel must be one of panels().

    /// The panel's view, then willShow. The first panel of a session to be shown is preceded by the restoring of all,
    /// unless a panel was restored before. False where the panel has no view.
    bool showPanel(CVPrintQualityPDE& panel);
    void restorePanel(CVPrintQualityPDE& panel);

    // What is chosen outside the panels.

    /// Marks without the test of constraints and tells the panels, unless `tell` is false; two-sided printing is also
    /// told by its notification. False, and nothing changed, for an unknown option or choice; `error` says which.
    bool markFromOutside(const std::string& option, const std::string& choice, bool tell, std::string& error);
    /// The page setup changed: the page format, the mark of the page size, then the notification, unless `tell` is
    /// false.
    void setPaper(std::optional<printing::Paper> paper, bool tell);
    /// The paper that the PPD gives for a page size; nullopt where it has none of this name.
    [[nodiscard]] std::optional<printing::Paper> paperForPageSize(const std::string& keyword) const;
    void setPrintSettings(std::optional<printing::PrintSettings> settings) { options_.settings = std::move(settings); }
    [[nodiscard]] std::optional<printing::PrintSettings>& settings() { return options_.settings; }

    /// None: there is no key window.
    void setWindowHeight(std::optional<double> height);
    /// Tells that the key window closes; false where there is none.
    bool closeKeyWindow();
    void postFromHost(const toolkit::Notification& notification);

    /// Hands the record over and begins a new one.
    [[nodiscard]] SessionRecord takeRecord() { return std::exchange(record_, {}); }

    // Printing.

    /// Asks the panels, in their order, stopping at the first that says no.
    bool shouldPrint();
    /// The whole set of the job's options, ordered by name: every mark that a panel manages, every other mark that
    /// differs from the PPD's default, the paper, and the print settings.
    [[nodiscard]] std::vector<JobOption> jobOptions() const;
    [[nodiscard]] const printing::PrinterDescription& description() const { return *options_.description; }

    // framework::HostCallback
    [[nodiscard]] bool respondsToSelector(std::string_view operation) const override;
    [[nodiscard]] const printing::PrinterDescription* ppdFile() override { return options_.description.get(); }
    [[nodiscard]] printing::PrintSettings* printSettings() override;
    [[nodiscard]] const printing::PageFormat* pageFormat() override;
    bool willChangePPDOptionKeyValuePpdChoice(std::string_view option, std::string_view choice) override;
    void panelViewDidResize() override;
    [[nodiscard]] toolkit::Application& application() override { return *this; }

    // toolkit::Application
    [[nodiscard]] std::shared_ptr<toolkit::Bundle> pluginBundle() override { return bundle_; }
    [[nodiscard]] std::vector<std::string> preferredLanguages() override { return languages(); }
    [[nodiscard]] toolkit::UserDefaults* userDefaults() override { return options_.userDefaults; }
    [[nodiscard]] const toolkit::TextMeasurer& textMeasurer() override { return measurer_; }
    [[nodiscard]] toolkit::Window* keyWindow() override { return options_.windowHeight ? &keyWindow_ : nullptr; }
    toolkit::AlertAnswer runModalAlert(const toolkit::Alert& alert) override;
    void beginSheet(const toolkit::Alert& alert,
                    const std::function<void(const toolkit::AlertAnswer&)>& didEnd) override;
    void runAlertPanel(const toolkit::AlertPanel& panel) override;
    int runModalForWindow(toolkit::Window& window) override;
    void stopModalWithCode(int code) override { modalCode_ = code; }
    bool registerHelpBooks(const std::filesystem::path& path) override;
    void openHelpAnchor(std::string_view anchor, std::string_view book) override;

private:
    explicit Session(SessionOptions options);
    void observePosts();
    [[nodiscard]] std::optional<RefusedMark> refusalOf(const std::string& option, const std::string& choice) const;

    SessionOptions options_;
    std::shared_ptr<toolkit::Bundle> bundle_;
    std::unique_ptr<CVInkQuality12PDEPlugIn> principal_;
    HelpBooks helpBooks_;
    toolkit::FixedAdvanceMeasurer measurer_;
    toolkit::Window keyWindow_{"keyWindow"};
    SessionRecord record_;
    const toolkit::Notification* postedByHost_ = nullptr; // is not recorded
    std::shared_ptr<const bool> observer_ = std::make_shared<const bool>();
    std::optional<int> modalCode_;
    bool restored_ = false;
    framework::PanelList panels_;
};

} // namespace host
