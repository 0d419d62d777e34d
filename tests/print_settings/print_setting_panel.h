#pragma once

#include "print_settings/CVInkPrintSetting12PDE.h"

#include "tests/support/test_host.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/item_list.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"
#include "toolkit/table_view.h"
#include "toolkit/window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace print_settings_tests {

/// The panel with its operations and fields open to tests. Where it is given a trace it writes down, among what the
/// host writes there, each of the operations that others of its operations run.
class OpenPanel : public CVInkPrintSetting12PDE {
public:
    std::vector<std::string>* trace = nullptr;

    void checkConstraints() override {
        note("checkConstraints");
        CVInkPrintSetting12PDE::checkConstraints();
    }
    void checkUIConstraints() override {
        note("checkUIConstraints");
        CVInkPrintSetting12PDE::checkUIConstraints();
    }
    void updateUI() override {
        note("updateUI");
        CVInkPrintSetting12PDE::updateUI();
    }
    void updateUIforKey(const std::optional<std::string>& key) override {
        note("updateUIforKey " + key.value_or("null"));
        CVInkPrintSetting12PDE::updateUIforKey(key);
    }
    void getUIValues() override {
        note("getUIValues");
        CVInkPrintSetting12PDE::getUIValues();
    }
    void setDefaults() override {
        note("setDefaults");
        CVInkPrintSetting12PDE::setDefaults();
    }
    void restoreOptionState() override {
        note("restoreOptionState");
        CVInkPrintSetting12PDE::restoreOptionState();
    }
    void checkModelName() override {
        note("checkModelName");
        CVInkPrintSetting12PDE::checkModelName();
    }

    using CVInkPrintSetting12PDE::addAdvOptionForKey;
    using CVInkPrintSetting12PDE::addOnOffSuffixToString;
    using CVInkPrintSetting12PDE::allowedQuality;
    using CVInkPrintSetting12PDE::availablePPDOptionKeys;
    using CVInkPrintSetting12PDE::canSelectColorMode;
    using CVInkPrintSetting12PDE::canSelectJpegPrint;
    using CVInkPrintSetting12PDE::changeResolutionLetterB;
    using CVInkPrintSetting12PDE::changeStateForArrayToEnableToDefault;
    using CVInkPrintSetting12PDE::checkDuplex;
    using CVInkPrintSetting12PDE::checkDuplexChange;
    using CVInkPrintSetting12PDE::checkIfOutputToFax;
    using CVInkPrintSetting12PDE::checkPageSizeChange;
    using CVInkPrintSetting12PDE::checkPaperAndShowOrientationAlert;
    using CVInkPrintSetting12PDE::checkShouldShowDiscAlert;
    using CVInkPrintSetting12PDE::checkShouldShowDuplexAlert;
    using CVInkPrintSetting12PDE::checkStateWithPaperFeed;
    using CVInkPrintSetting12PDE::checkUIStateWithMediaType;
    using CVInkPrintSetting12PDE::defaultQualityForMediaType;
    using CVInkPrintSetting12PDE::determineKey;
    using CVInkPrintSetting12PDE::determineLabel;
    using CVInkPrintSetting12PDE::determineUI;
    using CVInkPrintSetting12PDE::dialogCancelDidClick;
    using CVInkPrintSetting12PDE::dialogOkDidClick;
    using CVInkPrintSetting12PDE::firstLanguageSetting;
    using CVInkPrintSetting12PDE::initializeAdvOption;
    using CVInkPrintSetting12PDE::initializePopup;
    using CVInkPrintSetting12PDE::paperSizeIsCustomEnv;
    using CVInkPrintSetting12PDE::readPageSetup;
    using CVInkPrintSetting12PDE::readyToShowEnvelopeAlert;
    using CVInkPrintSetting12PDE::
        readyToShowPaperAlertWithKindOrientationMessageAlertWindowAlertViewAlertImageAlertMessageLabel;
    using CVInkPrintSetting12PDE::requestNewOutputBin;
    using CVInkPrintSetting12PDE::revertUIForKey;
    using CVInkPrintSetting12PDE::setDefaultQuality;
    using CVInkPrintSetting12PDE::showDialogWithAlertInfo;
    using CVInkPrintSetting12PDE::toggleShowOption;

    using CVPrintQualityPDE::effectContent;
    using CVPrintQualityPDE::hasFlag;
    using CVPrintQualityPDE::imageModeFlag_;
    using CVPrintQualityPDE::optionButton;
    using CVPrintQualityPDE::paperName;
    using CVPrintQualityPDE::popupInited;
    using CVPrintQualityPDE::PPDKeys;
    using CVPrintQualityPDE::setFlag;

private:
    void note(const std::string& operation) {
        if (trace != nullptr)
            trace->push_back("call " + operation);
    }
};

/// A panel in a test's host. The host is there from the start, the panel when the test makes it; what the host wrote
/// down while the panel was made or shown is put away.
class PrintSettingPanel : public testing::Test {
protected:
    PrintSettingPanel() { openHost(tests::samplePpd("corvane-a3")); }

    std::unique_ptr<tests::TestHost> host;
    std::shared_ptr<OpenPanel> panel;

    void openHost(const std::string& ppdText, std::vector<std::string> languages = {"en"});
    void makePanel();
    /// Makes the panel and loads its view; nothing is filled yet.
    void makePanelWithView();
    /// Makes the panel, loads its view and brings it to the front.
    void showPanel();
    /// Gives the job this paper, of a page size of the PPD.
    void setPaper(const std::string& name);
    /// Gives the job a paper of a user-defined size, in points.
    void setCustomPaper(const std::string& name, std::optional<double> width, std::optional<double> height);

    /// The view of this name; fails hard where the description has none of this kind.
    template <typename Kind>
    Kind& view(std::string_view name) {
        auto* found = dynamic_cast<Kind*>(panel->loadedViews()->viewNamed(name));
        if (found == nullptr)
            throw std::runtime_error("There is no such view: " + std::string(name));
        return *found;
    }
    toolkit::PopUpList& popup(std::string_view name) { return view<toolkit::PopUpList>(name); }
    toolkit::CheckBox& box(std::string_view name) { return view<toolkit::CheckBox>(name); }
    toolkit::Label& label(std::string_view name) { return view<toolkit::Label>(name); }

    /// Adds items for these keywords, each its own title, and selects nothing else.
    static void addItems(toolkit::PopUpList& list, const std::vector<std::string>& keywords);
    static std::vector<std::string> keywordsOf(const toolkit::PopUpList& list);
    static std::vector<std::string> disabledKeywordsOf(const toolkit::PopUpList& list);
    /// The user picks the item; fails hard where there is none.
    void choose(std::string_view popupName, std::string_view keyword);

    void setPending(const std::string& key, const std::string& choice);
    void removePending(const std::string& key);
    /// The pending choice; an empty text where there is none.
    std::string pending(std::string_view key);
    /// The choice that is marked in the PPD; an empty text where there is none.
    std::string marked(std::string_view option);
    /// Puts the whole flag word.
    void setFlags(std::uint32_t word) { panel->imageModeFlag_ = word; }
    /// The bits of the flag word that are in the mask.
    std::uint32_t flags(std::uint32_t mask) { return panel->imageModeFlag() & mask; }

    /// What was asked of the host since the log was taken last.
    std::vector<std::string> takeAsked() { return takeLogBeginningWith({"ask ", "refuse "}); }
    /// What the panel posted since the log was taken last.
    std::vector<std::string> takePosted() { return takeLogBeginningWith({"post "}); }

    /// Posts from nobody.
    static void post(std::string_view name);
    static void postPaperChange() { post("PMPrintDestinationPaperDidChangeNotification"); }
    static void postDuplexChange() { post("PMPrintDuplexChangedNotification"); }

private:
    std::vector<std::string> takeLogBeginningWith(const std::vector<std::string>& starts);
};

/// The notifications to the other panel, as the host writes them down.
inline const std::string kPostedColor = "post CVInkPrintSettingNotification {CVMonoColor=0,FromSetting=CVMonoColor}";
inline const std::string kPostedMono = "post CVInkPrintSettingNotification {CVMonoColor=1,FromSetting=CVMonoColor}";
inline const std::string kPostedDither =
    "post CVInkPrintSettingNotification {CVHalfTonePattern=0,FromSetting=CVHalfTonePattern}";
inline const std::string kPostedDiffusion =
    "post CVInkPrintSettingNotification {CVHalfTonePattern=1,FromSetting=CVHalfTonePattern}";

/// The text with one part of it replaced; fails hard where it lacks that part.
std::string replaced(std::string text, std::string_view part, std::string_view by);
/// The sample printer "corvane-a3" without one of its options.
std::string samplePpdWithoutOption(const std::string& option);
/// A copy of the log without entries of the host's that begin so.
std::vector<std::string> without(std::vector<std::string> log, std::string_view start);

} // namespace print_settings_tests
