#pragma once

#include "framework/CVPrintQualityPDE.h"
#include "framework/option_keywords.h"
#include "tests/support/test_host.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace framework_tests {

using Words = std::vector<std::string>;

/// A panel of the tests' own: the base's operations and fields are open, its controls are those that a test binds, and
/// it tells which of its operations run.
class TestPanel : public CVPrintQualityPDE {
public:
    struct Binding {
        std::string keyword;
        toolkit::View* control = nullptr;
        toolkit::View* label = nullptr;
    };

    std::vector<Binding> bindings;
    std::optional<Words> summaryKeys; ///< what availablePPDOptionKeys answers; none: what the base answers
    bool tellsSteps = false;          ///< whether the steps are written into the host's log
    /// Hears of each operation as it begins, with its argument: "updateUIforKey CVMediaType".
    std::function<void(const std::string& step)> onStep;
    toolkit::PopUpList* mediaPopup = nullptr; // connected by view descriptions
    toolkit::RadioMatrix* matchingMatrix = nullptr;

    using CVPrintQualityPDE::adjustUIPositionForParts;
    using CVPrintQualityPDE::alertDidEndReturnCodeContextInfo;
    using CVPrintQualityPDE::changeImageOfView;
    using CVPrintQualityPDE::checkColorSync;
    using CVPrintQualityPDE::checkFax;
    using CVPrintQualityPDE::dialogDidExpand;
    using CVPrintQualityPDE::observe;
    using CVPrintQualityPDE::registerHelp;
    using CVPrintQualityPDE::removeNotificationObserver;
    using CVPrintQualityPDE::setViewFrameSize;
    using CVPrintQualityPDE::shouldShowAlert;
    using CVPrintQualityPDE::showHelpFile;

    using CVPrintQualityPDE::effectContent;
    using CVPrintQualityPDE::imageModeFlag_;
    using CVPrintQualityPDE::optionButton;
    using CVPrintQualityPDE::outputBin_;
    using CVPrintQualityPDE::panelView_;
    using CVPrintQualityPDE::paperName;
    using CVPrintQualityPDE::pdePluginCallbackObject_;
    using CVPrintQualityPDE::pluginBundle;
    using CVPrintQualityPDE::popupInited;
    using CVPrintQualityPDE::ppd;
    using CVPrintQualityPDE::PPDKeys;
    using CVPrintQualityPDE::thePDEName_;

    bool initWithCallback(framework::HostCallback* callback) override;
    std::string panelName() override;
    void willShow() override;
    bool shouldHide() override;
    bool shouldPrint() override;
    bool saveValuesAndReturnError(const framework::ErrorSlot& error = {}) override;
    bool restoreValuesAndReturnError(const framework::ErrorSlot& error = {}) override;
    std::optional<toolkit::ValueMap> summaryInfo() override;
    std::optional<Words> supportedPPDOptionKeys() override;
    void PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) override;

    void setPPDKeys(const std::optional<Words>& keys) override;
    void saveAllValues() override;
    void requestNewOutputBin(toolkit::View* sender) override;
    void revertUIForKey(toolkit::View* control, const std::optional<std::string>& key) override;
    void updateUI() override;
    void updateUIforKey(const std::optional<std::string>& key) override;
    bool setAndMarkValueForKey(const std::optional<std::string>& value, const std::optional<std::string>& key) override;
    void getUIValues() override;
    std::optional<Words> availablePPDOptionKeys() override;
    void setDefaults() override;

    void initializePopup() override;
    std::optional<std::string> determineKey(toolkit::View* control) override;
    toolkit::View* determineUI(const std::optional<std::string>& key) override;
    toolkit::View* determineLabel(const std::optional<std::string>& key) override;

    void checkConstraints() override;
    void checkUIConstraints() override;
    void checkModelName() override;
    void changeResolutionLetterB() override;

    std::string optionName() override;
    void saveOptionState() override;
    void restoreOptionState() override;
    void toggleShowOption(toolkit::View* sender) override;

    std::optional<std::string> helpAnchor() override;
    std::optional<std::string> helpBook() override;

protected:
    [[nodiscard]] OutletTables outletTables() const override;

private:
    void step(const std::string& name);       ///< an operation that does something
    void look(const std::string& name) const; ///< one that only answers: never in the log

    tests::TestHost* host_ = nullptr;
};

/// One that tells its steps from its construction on.
class TellingPanel : public TestPanel {
public:
    TellingPanel() { tellsSteps = true; }
};

/// The options of the PPD that most tests open: pop-ups for CVMediaType and CVResolution, a matrix for CVColorMatching,
/// check boxes for CVBiDir, CVSlowDrying and MirrorPrint, and the output of the job.
std::string testOptions();

/// A dialog with one panel and controls of the test's own for testOptions(). The panel manages their options and has a
/// store, but no view; its controls are not filled yet.
class Dialog {
public:
    explicit Dialog(const std::string& optionLines = testOptions());

    /// Fills the controls and shows the pending values, as a panel that was shown does, and empties the log.
    void populate();
    [[nodiscard]] std::string pending(const std::string& option) const;
    [[nodiscard]] std::string marked(const std::string& option) const;
    /// The keyword of the selected item, "none" where there is none.
    static std::string selected(const toolkit::PopUpList& popup);
    static std::string selected(const toolkit::RadioMatrix& matrix);

    tests::TestHost host;
    toolkit::View root{"panelView"};
    toolkit::PopUpList media{"mediaPopup"}, resolution{"resolutionPopup"};
    toolkit::RadioMatrix matching{"matchingMatrix", 3};
    toolkit::CheckBox biDir{"biDirButton"}, slowDrying{"slowDryButton"}, mirror{"mirrorButton"};
    toolkit::Label mediaLabel{"mediaLabel"}, resolutionLabel{"resolutionLabel"};
    toolkit::TitledBox matchingBox{"matchingBox"};
    toolkit::CheckBox disclosure{"optionButton"};
    std::shared_ptr<TestPanel> panel = std::make_shared<TestPanel>();
};

/// A panel that is built for this host, as the factory builds it.
template <typename Panel = TestPanel>
std::shared_ptr<Panel> panelFor(tests::TestHost& host) {
    auto panel = std::make_shared<Panel>();
    if (!panel->initWithCallback(&host))
        throw std::runtime_error("the panel was not built");
    return panel;
}

} // namespace framework_tests

namespace toolkit {
inline void PrintTo(const Value& value, std::ostream* stream) {
    *stream << (value.isAbsent() ? "absent" : "\"" + value.textReading() + "\"");
}
} // namespace toolkit
