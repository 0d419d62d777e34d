#pragma once

#include "framework/CVPrintQualityPDE.h"
#include "framework/host_callback.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tests {

/// A host of panels under a test's control: it marks in a real PPD, writes down everything that it is asked, and
/// answers alerts as it is told. Everything is public: a test sets it up as it likes.
class TestHost : public framework::HostCallback, public toolkit::Application {
public:
    /// From the text of a PPD, its defaults marked; fails the test where it cannot be opened.
    explicit TestHost(const std::string& ppdText, std::vector<std::string> languages = {"en"});
    ~TestHost() override;

    std::unique_ptr<printing::PrinterDescription> description;
    std::optional<printing::PrintSettings> settings = printing::PrintSettings();
    std::optional<printing::PageFormat> format = printing::PageFormat();
    std::set<std::string, std::less<>> lacking; ///< operations that it does not respond to
    std::shared_ptr<toolkit::Bundle> bundle;    ///< the built bundle, its texts left as their keys
    std::vector<std::string> languages;
    toolkit::MemoryUserDefaults defaults;
    bool hasDefaults = true;
    toolkit::FixedAdvanceMeasurer measurer;
    toolkit::Window window{"keyWindow"};
    bool hasKeyWindow = true;
    bool helpRegisters = true; ///< whether registering help books succeeds

    /// Refuses "Option=Choice" and "Option" (every choice); raises what the function raises.
    std::set<std::string> refused;
    std::function<void(const std::string& option, const std::string& choice)> beforeAsking;

    /// What happened, in order: "ask Option=Choice", "refuse Option=Choice", "post Name {key=value,...}", "resized",
    /// "alert KEY-OF-MESSAGE-TEXT", "sheet ...", "panel ...", "window NAME", "register PATH", "help ANCHOR in BOOK".
    std::vector<std::string> log;
    /// Hands the log over and begins a new one.
    std::vector<std::string> takeLog() { return std::exchange(log, {}); }

    std::deque<toolkit::AlertAnswer> answers; ///< for alerts and sheets; with none left, the first button
    std::deque<int> windowCodes;              ///< what a modal run of a window answers; with none left, 1
    std::vector<toolkit::Alert> alerts;
    std::vector<toolkit::AlertPanel> alertPanels;

    /// Loads the bundle again with other texts or info entries.
    void reopenBundle(toolkit::BundleView view);

    [[nodiscard]] bool respondsToSelector(std::string_view operation) const override;
    [[nodiscard]] const printing::PrinterDescription* ppdFile() override { return description.get(); }
    [[nodiscard]] printing::PrintSettings* printSettings() override;
    [[nodiscard]] const printing::PageFormat* pageFormat() override;
    bool willChangePPDOptionKeyValuePpdChoice(std::string_view option, std::string_view choice) override;
    void panelViewDidResize() override;
    [[nodiscard]] toolkit::Application& application() override { return *this; }

    [[nodiscard]] std::shared_ptr<toolkit::Bundle> pluginBundle() override { return bundle; }
    [[nodiscard]] std::vector<std::string> preferredLanguages() override { return languages; }
    [[nodiscard]] toolkit::UserDefaults* userDefaults() override { return hasDefaults ? &defaults : nullptr; }
    [[nodiscard]] const toolkit::TextMeasurer& textMeasurer() override { return measurer; }
    [[nodiscard]] toolkit::Window* keyWindow() override { return hasKeyWindow ? &window : nullptr; }
    toolkit::AlertAnswer runModalAlert(const toolkit::Alert& alert) override;
    void beginSheet(const toolkit::Alert& alert,
                    const std::function<void(const toolkit::AlertAnswer&)>& didEnd) override;
    void runAlertPanel(const toolkit::AlertPanel& panel) override;
    int runModalForWindow(toolkit::Window& window) override;
    void stopModalWithCode(int code) override;
    bool registerHelpBooks(const std::filesystem::path& path) override;
    void openHelpAnchor(std::string_view anchor, std::string_view book) override;

private:
    toolkit::AlertAnswer answer(const char* how, const toolkit::Alert& alert);
    std::shared_ptr<const bool> observer_ = std::make_shared<const bool>();
};

/// A small PPD's text: the header that every PPD needs, then these lines.
std::string ppdWith(const std::string& lines);
/// The lines of one option: a default (empty: none) and choices as "keyword/text".
std::string ppdOption(const std::string& keyword, const std::string& text, const std::string& defaultChoice,
                      const std::vector<std::string>& choices);
/// The text of a sample printer's PPD, such as "corvane-a3".
std::string samplePpd(const std::string& name);

} // namespace tests
