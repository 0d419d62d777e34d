// A plug-in of two small panels that post what they are told: "first" manages the media, "second" the tray. It is built
// with the versions that a test needs; without an entry it is a shared object like any other.

#include "framework/CVPrintQualityPDE.h"
#include "framework/plug_in_entry.h"

#include "toolkit/notification_center.h"

namespace {

class FakePanel : public CVPrintQualityPDE {
public:
    FakePanel(std::string name, std::vector<std::string> keys) : name_(std::move(name)), keys_(std::move(keys)) {}

    bool initWithCallback(framework::HostCallback* callback) override {
        if (!CVPrintQualityPDE::initWithCallback(callback))
            return false;
        setPPDKeys(keys_);
        observe(printing::kPaperDidChangeNotification, nullptr, &FakePanel::paperDidChange);
        observe(printing::kDuplexChangedNotification, nullptr, &FakePanel::duplexDidChange);
        isMade_ = true;
        return true;
    }
    std::string panelName() override { return name_; }
    bool restoreValuesAndReturnError(const framework::ErrorSlot& error) override {
        tell("restored");
        return CVPrintQualityPDE::restoreValuesAndReturnError(error);
    }
    void PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) override {
        tell("told " + option + "=" + choice);
        if (const auto wish = printSettingForKey(name_ + " asks for its media"))
            setAndMarkValueForKey(wish->textReading(), "InkMedia");
    }
    bool shouldPrint() override {
        tell("asked to print");
        return !printSettingForKey(name_ + " stops the job");
    }

private:
    void paperDidChange(const toolkit::Notification&) {
        const auto& paper = pdePluginCallbackObject_->pageFormat()->paper;
        tell("paper " + (paper ? paper->name.value_or("nameless") : "none") + ", marked " +
             markedChoice("PageSize").value_or("none"));
    }
    void duplexDidChange(const toolkit::Notification&) { tell("two-sided " + markedChoice("Duplex").value_or("none")); }
    void tell(const std::string& what) {
        if (isMade_)
            toolkit::NotificationCenter::defaultCenter().post(
                {.name = name_ + " " + what, .sender = pdePluginCallbackObject_, .userInfo = {}});
    }

    std::string name_;
    std::vector<std::string> keys_;
    bool isMade_ = false;
};

struct FirstPanel : FakePanel {
    FirstPanel() : FakePanel("first", {"InkMedia", "Slow"}) {}
};
struct SecondPanel : FakePanel {
    SecondPanel() : FakePanel("second", {"Tray"}) {}
};

[[maybe_unused]] std::unique_ptr<CVInkQuality12PDEPlugIn> makePrincipalObject() {
    return std::make_unique<CVInkQuality12PDEPlugIn>(
        std::vector<CVInkQuality12PDEPlugIn::PanelMaker>{makePanel<FirstPanel>, makePanel<SecondPanel>});
}

[[maybe_unused]] const framework::PanelInspection& panelInspection() {
    static const framework::PanelInspection inspection({});
    return inspection;
}

} // namespace

#ifdef FAKE_INTERFACE_VERSION
extern "C" __attribute__((visibility("default"))) const framework::PlugInEntry CVPrintPlugInEntry = {
    .interfaceVersion = FAKE_INTERFACE_VERSION,
    .inspectionVersion = FAKE_INSPECTION_VERSION,
    .makePrincipalObject = makePrincipalObject,
    .panelInspection = panelInspection,
};
#endif
