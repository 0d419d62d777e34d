#pragma once

#include "color_settings/color_keywords.h"
#include "framework/CVPrintQualityPDE.h"

#include "imaging/bitmap.h"
#include "imaging/filter_nodes.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The "Color Setting" panel: colour matching, half-tone pattern and colour enhancement with five adjustments, and a
/// preview of their effect on a reference picture.
class CVInkColorSettingPDE : public CVPrintQualityPDE {
public:
    bool initWithCallback(framework::HostCallback* callback) override;
    std::string panelName() override;
    void willShow() override;
    bool shouldHide() override;
    bool saveValuesAndReturnError(const framework::ErrorSlot& error = {}) override;
    bool restoreValuesAndReturnError(const framework::ErrorSlot& error = {}) override;
    std::optional<toolkit::ValueMap> summaryInfo() override;
    void PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) override;

protected:
    [[nodiscard]] MessageTables messageTables() const override;
    [[nodiscard]] OutletTables outletTables() const override;
    [[nodiscard]] toolkit::ValueMap ownFields() const override;
    [[nodiscard]] std::optional<framework::PreviewState> preview() const override;

    // Options (panel_options.cpp).
    void initializePopup() override;
    std::optional<std::string> determineKey(toolkit::View* control) override;
    toolkit::View* determineUI(const std::optional<std::string>& key) override;
    toolkit::View* determineLabel(const std::optional<std::string>& key) override;
    toolkit::View* determineField(const std::optional<std::string>& key);
    std::optional<std::string> helpBook() override;
    void setDefaults() override;
    void saveAllValues() override;
    void updateUI() override;
    void checkConstraints() override;
    void checkUIConstraints() override;
    std::optional<std::vector<std::string>> availablePPDOptionKeys() override;
    void toggleShowOption(toolkit::View* sender) override;
    void printSettingsNotified(const toolkit::Notification& notification);

    // The five adjustments (adjustment_values.cpp).
    void setEffectDefaults();
    void restoreEffectValues();
    void saveEffectValues();
    void revertEffectDialog(toolkit::View* sender);
    void effectValueDidChange(toolkit::NumberField* sender);

    // The preview (preview.cpp).
    std::optional<imaging::Picture> refImage() { return refImage_; }
    void setRefImage(const std::optional<imaging::Picture>& picture) { refImage_ = picture; }
    void setRefImageWithName(const std::optional<std::string>& name);
    std::optional<imaging::Picture> applyColorControlFilterCode(const std::optional<imaging::Picture>& picture,
                                                                int code);
    std::optional<imaging::Picture> applyColorMatrixFilterCode(const std::optional<imaging::Picture>& picture,
                                                               int code);
    void redrawEffectImage();
    void updateImage(toolkit::View* sender);

private:
    struct Binding;
    static const Binding kBindings[];

    /// Nothing while the adjustment keys do not exist yet: during the base's construction.
    [[nodiscard]] const std::vector<std::string>& effectKeys() const { return PPDEffectKeys; }
    [[nodiscard]] std::int64_t adjustment(keywords::AdjustmentTag tag) const;
    void setBrightness();
    void setContrast();
    void setColorVector(keywords::AdjustmentTag tag);
    [[nodiscard]] bool enhancementIsOn() const;
    void redrawAfterChangeOfTag(int tag);
    void show(const std::optional<imaging::Picture>& picture);

    toolkit::RadioMatrix* colorMatchingMatrix = nullptr;
    toolkit::PopUpList* ditherPopup = nullptr;
    toolkit::CheckBox* colorEnhanceButton = nullptr;
    toolkit::Label* colorMatchingLabel = nullptr;
    toolkit::Label* ditherLabel = nullptr;
    toolkit::Label* brightnessLabel = nullptr;
    toolkit::Label* contrastLabel = nullptr;
    toolkit::Label* redLabel = nullptr;
    toolkit::Label* greenLabel = nullptr;
    toolkit::Label* blueLabel = nullptr;
    toolkit::NumberField* brightnessField = nullptr;
    toolkit::NumberField* contrastField = nullptr;
    toolkit::NumberField* redField = nullptr;
    toolkit::NumberField* greenField = nullptr;
    toolkit::NumberField* blueField = nullptr;
    toolkit::Label* optionLabel = nullptr;
    toolkit::ImageView* effectImageView = nullptr;
    toolkit::ImageView* colorModeImageView = nullptr;

    std::vector<std::string> PPDEffectKeys; // empty until the first setEffectDefaults()
    imaging::FilterNode<imaging::ColorControls> ccFilter;
    imaging::FilterNode<imaging::ColorMatrix> cmFilter;
    std::optional<imaging::Picture> refImage_;
    std::optional<imaging::Picture> shownPicture_;
    std::shared_ptr<imaging::Bitmap> rendered_ = std::make_shared<imaging::Bitmap>(); // reused by every redraw
};
