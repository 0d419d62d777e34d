// The smallest print dialog: it opens a PPD, has the plug-in make its panels, shows them as text, chooses glossy paper
// and tells what came of it. Built against an installation alone, as a host of one's own would be.

#include <framework/CVInkQuality12PDEPlugIn.h>
#include <framework/CVPrintQualityPDE.h>
#include <framework/host_callback.h>
#include <framework/plug_in_entry.h>
#include <printing/page_format.h>
#include <printing/print_settings.h>
#include <printing/printer_description.h>
#include <toolkit/alert.h>
#include <toolkit/application.h>
#include <toolkit/bundle.h>
#include <toolkit/popup_list.h>
#include <toolkit/text_measuring.h>
#include <toolkit/user_defaults.h>
#include <toolkit/view_description.h>
#include <toolkit/window.h>

#include <cstdio>
#include <dlfcn.h>
#include <memory>
#include <optional>
#include <string>

namespace {

class TinyHost : public framework::HostCallback, public toolkit::Application {
public:
    TinyHost(std::unique_ptr<printing::PrinterDescription> printer, std::shared_ptr<toolkit::Bundle> bundle)
        : printer_(std::move(printer)), bundle_(std::move(bundle)) {
        printer_->markDefaults();
        window_.setFrame({.width = 640, .height = 800});
    }
    [[nodiscard]] std::optional<std::string> marked(const char* option) const { return printer_->markedChoice(option); }

    [[nodiscard]] bool respondsToSelector(std::string_view) const override { return true; }
    [[nodiscard]] const printing::PrinterDescription* ppdFile() override { return printer_.get(); }
    [[nodiscard]] printing::PrintSettings* printSettings() override { return &settings_; }
    [[nodiscard]] const printing::PageFormat* pageFormat() override { return &format_; }
    bool willChangePPDOptionKeyValuePpdChoice(std::string_view option, std::string_view choice) override {
        return printer_->mark(option, choice);
    }
    void panelViewDidResize() override {}
    [[nodiscard]] toolkit::Application& application() override { return *this; }

    [[nodiscard]] std::shared_ptr<toolkit::Bundle> pluginBundle() override { return bundle_; }
    [[nodiscard]] std::vector<std::string> preferredLanguages() override { return {"en"}; }
    [[nodiscard]] toolkit::UserDefaults* userDefaults() override { return nullptr; }
    [[nodiscard]] const toolkit::TextMeasurer& textMeasurer() override { return measurer_; }
    [[nodiscard]] toolkit::Window* keyWindow() override { return &window_; }
    toolkit::AlertAnswer runModalAlert(const toolkit::Alert&) override { return {}; }
    void beginSheet(const toolkit::Alert&, const std::function<void(const toolkit::AlertAnswer&)>& didEnd) override {
        didEnd({});
    }
    void runAlertPanel(const toolkit::AlertPanel&) override {}
    int runModalForWindow(toolkit::Window&) override { return 1; }
    void stopModalWithCode(int) override {}
    bool registerHelpBooks(const std::filesystem::path& path) override {
        std::printf("help: %s\n", path.filename().c_str());
        return true;
    }
    void openHelpAnchor(std::string_view, std::string_view) override {}

private:
    std::unique_ptr<printing::PrinterDescription> printer_;
    std::shared_ptr<toolkit::Bundle> bundle_;
    printing::PrintSettings settings_;
    printing::PageFormat format_;
    toolkit::FixedAdvanceMeasurer measurer_;
    toolkit::Window window_{"tiny"};
};

toolkit::PopUpList* popUpNamed(std::string_view name, const CVPrintQualityPDE& panel) {
    return dynamic_cast<toolkit::PopUpList*>(panel.loadedViews()->viewNamed(name));
}

int failed(const std::string& reason) {
    std::fprintf(stderr, "tiny_host: %s\n", reason.c_str());
    return 1;
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    const std::string bundlePath = argumentCount > 1 ? arguments[1] : TINY_HOST_BUNDLE;
    const std::string ppd = argumentCount > 2 ? arguments[2] : TINY_HOST_PPD;

    std::string error;
    auto printer = printing::PrinterDescription::openFile(ppd, {"en"}, error);
    if (printer == nullptr)
        return failed(error);
    toolkit::BundleView view;
    view.languages = {"en"};
    auto bundle = toolkit::Bundle::open(bundlePath, std::move(view), error);
    if (bundle == nullptr)
        return failed(error);
    const auto* executable = toolkit::valueInMap(bundle->infoDictionary(), "CFBundleExecutable").as<std::string>();
    if (executable == nullptr)
        return failed("the bundle does not name its executable");
    void* library = ::dlopen((bundlePath + "/" + *executable).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr)
        return failed(::dlerror());
    const auto* entry = static_cast<const framework::PlugInEntry*>(::dlsym(library, framework::kPlugInEntrySymbol));
    if (entry == nullptr || entry->interfaceVersion != framework::kPlugInInterfaceVersion)
        return failed("the plug-in is of another version");

    TinyHost host(std::move(printer), std::move(bundle));
    const auto factory = entry->makePrincipalObject();
    const framework::PanelList panels =
        factory->PDEPanelsForTypeWithHostInfo(CVInkQuality12PDEPlugIn::kPrintDialogPanelType, &host);
    for (const auto& panel : panels)
        panel->restoreValuesAndReturnError();
    for (const auto& panel : panels) {
        if (panel->panelView() == nullptr)
            return failed("a panel has no view");
        panel->willShow();
        std::printf("panel: %s\n", panel->panelName().c_str());
        if (auto* media = popUpNamed("mediaTypePopup", *panel))
            media->userSelectedItemAtIndex(media->indexOfItemWithKeyword("Glossy"));
        for (const auto& each : panel->loadedViews()->views())
            if (const auto* popUp = dynamic_cast<toolkit::PopUpList*>(each.get());
                popUp != nullptr && popUp->selectedItem() != nullptr && !popUp->isHidden())
                std::printf("%s: %s\n", popUp->name().c_str(), popUp->selectedItem()->title.c_str());
    }
    std::printf("marked: CVResolution=%s\n", host.marked("CVResolution").value_or("").c_str());
    return 0;
}
