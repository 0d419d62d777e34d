#include "tests/host/session/fake_dialog.h"

#include "tests/support/test_host.h"

namespace host {

std::filesystem::path fakeBundle(const std::string& name) {
    return std::filesystem::path(CV_BINARY_DIR) / "tests" / "bundles" / (name + ".plugin");
}

std::string smallPrinter() {
    return tests::ppdWith(
        "*UIConstraints: *InkMedia Glossy *Tray Lower\n*UIConstraints: *Tray Lower *InkMedia Glossy\n"
        "*UIConstraints: *InkMedia Glossy *Slow ON\n*UIConstraints: *Slow ON *InkMedia Glossy\n" +
        tests::ppdOption("PageSize", "Paper Size", "A4", {"A4/A4", "A5/A5"}) +
        tests::ppdOption("PageRegion", "Paper Size", "A4", {"A4/A4", "A5/A5"}) +
        "*DefaultPaperDimension: A4\n*PaperDimension A4/A4: \"595 842\"\n*PaperDimension A5/A5: \"420 595\"\n" +
        tests::ppdOption("InkMedia", "Media", "Plain", {"Plain/Plain Paper", "Glossy/Glossy Paper", "Matte/Matte"}) +
        tests::ppdOption("Tray", "Paper Tray", "Upper", {"Upper/Upper Tray", "Lower/Lower Tray"}) +
        tests::ppdOption("Slow", "Slow Drying", "OFF", {"OFF/Off", "ON/On"}) +
        tests::ppdOption("Duplex", "Two-Sided", "None", {"None/Off", "DuplexNoTumble/Long Edge"}) +
        tests::ppdOption("Staple", "Staples", "No", {"No/None", "One/One"}) +
        tests::ppdOption("Unset", "Unset", "", {"A/A", "B/B"}));
}

toolkit::AlertAnswer SilentPresenter::presentAlert(const toolkit::Alert& alert, bool asSheet) {
    shown.push_back((asSheet ? "sheet " : "alert ") + alert.messageText);
    return answer;
}

void SilentPresenter::presentPanel(const toolkit::AlertPanel& panel) {
    shown.push_back("panel " + panel.title);
}

void SilentPresenter::presentWindow(toolkit::Window& window) {
    shown.push_back("window " + window.name() + (window.isHidden() ? " hidden" : ""));
    if (whileWindowRuns)
        whileWindowRuns();
}

void SilentPresenter::openHelp(std::string_view anchor, std::string_view book) {
    shown.push_back("help " + std::string(anchor) + " in " + std::string(book));
}

FakeDialog::FakeDialog() {
    std::string error;
    options.plugIn = PlugIn::load(fakeBundle("Fake"), error);
    EXPECT_EQ(error, "");
    options.bundleView.languages = {"en"};
    options.description = printing::PrinterDescription::openText(smallPrinter(), {"en"}, error);
    EXPECT_EQ(error, "");
    options.description->markDefaults();
    description = options.description.get();
    options.presenter = &presenter;
}

Session& FakeDialog::open() {
    std::string error;
    session = Session::open(std::move(options), error);
    EXPECT_EQ(error, "");
    (void)session->takeRecord();
    return *session;
}

bool FakeDialog::ask(const std::string& option, const std::string& choice) {
    return session->willChangePPDOptionKeyValuePpdChoice(option, choice);
}

std::optional<std::string> FakeDialog::marked(const std::string& option) const {
    return description->markedChoice(option);
}

std::vector<std::string> FakeDialog::posted() {
    std::vector<std::string> names;
    for (const toolkit::Notification& notification : session->takeRecord().posted)
        names.push_back(notification.name);
    return names;
}

} // namespace host
