#pragma once

#include "framework/CVPrintQualityPDE.h"
#include "framework/control_binding.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {
class ItemList;
class PushButton;
class TabView;
class TableView;
class Window;
} // namespace toolkit

/// The "Print Setting" panel: media type, quality, colour mode, paper source and thickness, two-sided printing and the
/// advanced options, with the rules that keep them consistent and the alerts before printing.
class CVInkPrintSetting12PDE : public CVPrintQualityPDE {
public:
    bool initWithCallback(framework::HostCallback* callback) override;
    std::string panelName() override;
    void willShow() override;
    bool shouldPrint() override;
    bool saveValuesAndReturnError(const framework::ErrorSlot& error = {}) override;
    std::optional<toolkit::ValueMap> summaryInfo() override;
    std::optional<std::vector<std::string>> supportedPPDOptionKeys() override;
    void PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) override;

protected:
    [[nodiscard]] MessageTables messageTables() const override;
    [[nodiscard]] OutletTables outletTables() const override;

    // Setup (setup.cpp).
    void initializePopup() override;
    void initializeAdvOption(const std::vector<toolkit::View*>& group);
    void addAdvOptionForKey(const std::string& text, const std::string& key);
    void toggleShowOption(toolkit::View* sender) override;
    std::optional<std::string> determineKey(toolkit::View* control) override;
    toolkit::View* determineUI(const std::optional<std::string>& key) override;
    toolkit::View* determineLabel(const std::optional<std::string>& key) override;
    std::optional<std::vector<std::string>> availablePPDOptionKeys() override;
    void updateUIforKey(const std::optional<std::string>& key) override;
    void revertUIForKey(toolkit::View* control, const std::optional<std::string>& key) override;

    // Option changes and defaults (option_changes.cpp).
    void requestNewOutputBin(toolkit::View* sender) override;
    void setDefaultQuality(const std::optional<std::string>& mediaType);
    void setDefaults() override;

    // Constraint rules (constraint_rules.cpp).
    void checkConstraints() override;
    void checkUIConstraints() override;

    // Media, quality and colour-mode rules (media_quality_rules.cpp), model classification (model_name.cpp).
    std::vector<std::string> allowedQuality(const std::optional<std::string>& mediaType);
    std::string defaultQualityForMediaType(const std::optional<std::string>& mediaType);
    void canSelectColorMode();
    void canSelectJpegPrint();
    void checkUIStateWithMediaType(bool reset);
    void checkModelName() override;
    std::string addOnOffSuffixToString(toolkit::CheckBox* box, const std::string& text);
    void changeResolutionLetterB() override;

    // Paper tracking (paper_tracking.cpp).
    bool readPageSetup();
    void checkPageSizeChange(const toolkit::Notification& notification);
    void checkDuplex();
    void checkDuplexChange(const toolkit::Notification& notification);
    bool paperSizeIsCustomEnv();
    void checkStateWithPaperFeed();
    void changeStateForArrayToEnableToDefault(toolkit::PopUpList* popup,
                                              const std::optional<std::vector<std::string>>& keywords, bool enable,
                                              bool toDefault);

    // Paper alerts (paper_alerts.cpp).
    bool checkPaperAndShowOrientationAlert();
    int showDialogWithAlertInfo(toolkit::Window* window, const std::optional<std::string>& suppressionKey);
    void dialogOkDidClick(toolkit::View* sender);
    void dialogCancelDidClick(toolkit::View* sender);
    void readyToShowEnvelopeAlert();
    void readyToShowPaperAlertWithKindOrientationMessageAlertWindowAlertViewAlertImageAlertMessageLabel(
        const std::string& kind, const std::string& messageKey, toolkit::Window* window, toolkit::ImageView* view,
        const std::string& picture, toolkit::Label* label);
    std::string firstLanguageSetting();

    // Pre-print checks (pre_print_checks.cpp).
    bool checkIfOutputToFax();
    bool checkShouldShowDiscAlert();
    bool checkShouldShowDuplexAlert();

private:
    using Binding = framework::ControlBinding<CVInkPrintSetting12PDE>;
    static const Binding kBindings[];
    [[nodiscard]] bool bindingHolds(const Binding& binding);

    /// The keyword of the item that is selected in the media-type pop-up; none without a pop-up or a selection.
    [[nodiscard]] std::optional<std::string> selectedMediaType() const;
    [[nodiscard]] bool outputBinMediaIsPlain() const;
    [[nodiscard]] bool isBorderlessA3() const;
    void changeState(toolkit::PopUpList* popup, std::initializer_list<std::string_view> keywords, bool enable,
                     bool toDefault);
    void postSetting(std::string_view setting, ImageModeFlag bit);
    void showBestQualityAlert();
    [[nodiscard]] std::optional<std::string> readPaperName();
    [[nodiscard]] bool isPaperOutOfLimits() const;
    [[nodiscard]] bool comesFromPaperMenu(const toolkit::Notification& notification) const;
    [[nodiscard]] const printing::Paper* pageFormatPaper() const;
    void showPicture(const std::string& name, toolkit::ImageView* view);
    bool showNormalPaperAlert(const std::string& messageKey, const std::string& picture);
    bool showCustomPaperAlert(const std::string& messageKey, const std::string& picture);
    bool checkCustomSizeAndShowAlert();
    void showUnsupportedPaperAlert();
    void setOrientation(std::string_view orientation);

    toolkit::PopUpList* mediaTypePopup = nullptr;
    toolkit::PopUpList* resolutionPopup = nullptr;
    toolkit::PopUpList* paperThickPopup = nullptr;
    toolkit::PopUpList* paperFeedPopup = nullptr;
    toolkit::PopUpList* monoColorPopup = nullptr;
    toolkit::PopUpList* jpegPopup = nullptr;
    toolkit::PopUpList* duplexPopup = nullptr;
    toolkit::CheckBox* slowDryButton = nullptr;
    toolkit::CheckBox* biDirButton = nullptr;
    toolkit::CheckBox* mirrorButton = nullptr;
    toolkit::CheckBox* reverseButton = nullptr;
    toolkit::CheckBox* vertLineAlignA3Button = nullptr;
    toolkit::CheckBox* vertLineAlignA4Button = nullptr;
    toolkit::CheckBox* vertLineAlignOtherButton = nullptr;
    toolkit::CheckBox* vertLineAlignQT22Button = nullptr;
    toolkit::Label* mediaTypeLabel = nullptr;
    toolkit::Label* resolutionLabel = nullptr;
    toolkit::Label* paperThickLabel = nullptr;
    toolkit::Label* paperFeedLabel = nullptr;
    toolkit::Label* monoColorLabel = nullptr;
    toolkit::Label* jpegLabel = nullptr;
    toolkit::Label* duplexLabel = nullptr;
    toolkit::ItemList* arrayController = nullptr;
    toolkit::TabView* advancedTabView = nullptr;
    toolkit::TableView* advancedTableView = nullptr;
    toolkit::Label* optionLabel = nullptr;
    toolkit::Label* vertLineLabel = nullptr;
    toolkit::View* vertLineSeparater = nullptr; // the name is spelled so

    toolkit::Window* envAlertWindow = nullptr;
    toolkit::ImageView* envAlertImageView = nullptr;
    toolkit::Label* envInstructionLabel1 = nullptr;
    toolkit::PushButton* envAlertOKButton = nullptr;
    toolkit::PushButton* envAlertCancelButton = nullptr;
    toolkit::Label* envAlertSummary = nullptr;
    toolkit::Window* normalPaperAlertWindow = nullptr;
    toolkit::ImageView* normalPaperAlertImageView = nullptr;
    toolkit::Label* normalPaperInstructionLabel = nullptr;
    toolkit::PushButton* normalPaperAlertOKButton = nullptr;
    toolkit::PushButton* normalPaperAlertCancelButton = nullptr;
    toolkit::CheckBox* suppressionButton = nullptr;
    toolkit::Window* customPaperAlertWindow = nullptr;
    toolkit::ImageView* customPaperAlertImageView = nullptr;
    toolkit::Label* customPaperInstructionLabel = nullptr;
    toolkit::PushButton* customPaperAlertOKButton = nullptr;
    toolkit::PushButton* customPaperAlertCancelButton = nullptr;
};
