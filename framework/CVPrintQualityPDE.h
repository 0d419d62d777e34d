#pragma once

#include "framework/export.h"
#include "framework/host_callback.h"
#include "framework/image_mode_flag.h"
#include "framework/message.h"
#include "framework/outlet.h"
#include "imaging/filters.h"
#include "toolkit/notification_center.h"
#include "toolkit/value.h"
#include "toolkit/view_description.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {
class CheckBox;
class ImageView;
class Label;
class NumberField;
class PopUpList;
class RadioMatrix;
} // namespace toolkit

namespace framework {

class PanelInspection;

/// A panel's preview of its adjustments, as an inspection sees it.
struct PreviewState {
    std::optional<imaging::Picture> shown;     ///< none where the view shows an empty picture
    std::optional<imaging::Picture> reference; ///< what the filters are put on
    imaging::ColorControls colorControls;      ///< the parameters that the two kept filters hold
    imaging::ColorMatrix colorMatrix;          ///< as above
};

} // namespace framework

/// The base of both panels. It binds the options of the printer's PPD to controls, keeps the pending choice of each
/// option, asks the host before every change, and supplies layout, help and the checks that both panels need.
///
/// Built in two phases by the factory's makers: the constructor sets fields only; initWithCallback(), which runs after
/// it, already reaches the overrides of the concrete panel, while PPDKeys, the view and effectContent are absent.
/// Use from the host's user-interface thread. Operations bear their message names: requestNewOutputBin() is
/// "requestNewOutputBin:".
class CV_FRAMEWORK_EXPORT CVPrintQualityPDE : public std::enable_shared_from_this<CVPrintQualityPDE> {
public:
    using PanelMessage = framework::Message<CVPrintQualityPDE>; ///< one row of a message table
    using PanelOutlet = framework::Outlet<CVPrintQualityPDE>;   ///< one row of an outlet table

    CVPrintQualityPDE();
    virtual ~CVPrintQualityPDE();
    CVPrintQualityPDE(const CVPrintQualityPDE&) = delete;
    CVPrintQualityPDE& operator=(const CVPrintQualityPDE&) = delete;

    // The panel protocol: what a host calls.

    /// False where the callback is null, has no bundle, or does not answer `willChangePPDOptionKeyValue:ppdChoice:`:
    /// there is no panel.
    virtual bool initWithCallback(framework::HostCallback* callback);
    virtual std::string panelName() = 0; ///< the panel's title, in the dialog's language
    std::string panelKind();             ///< names this kind of panel to the host
    /// Loads the view description named thePDEName on the first call. Null where it cannot be loaded. Owned here.
    toolkit::View* panelView();
    virtual void willShow();    ///< the panel comes to the front: its controls are filled anew
    virtual bool shouldHide();  ///< the panel leaves the front; always true
    virtual bool shouldPrint(); ///< saves, then asks the user what must be asked; false: the job must not go
    virtual bool saveValuesAndReturnError(const framework::ErrorSlot& error = {});    ///< always true
    virtual bool restoreValuesAndReturnError(const framework::ErrorSlot& error = {}); ///< always true
    /// Option texts and the texts of their choices, and under "Summary Display Order" the list of the option texts;
    /// nullopt where a panel has no summary.
    virtual std::optional<toolkit::ValueMap> summaryInfo();
    virtual std::optional<std::vector<std::string>> supportedPPDOptionKeys(); ///< null before there are any
    virtual void PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice);
    bool shouldShowHelp(); ///< false: the panel has opened its own help

    // Accessors.
    [[nodiscard]] std::optional<std::string> thePDEName() const { return thePDEName_; } ///< names form and help book
    void setThePDEName(const std::optional<std::string>& name) { thePDEName_ = name; }  ///< none: no name
    [[nodiscard]] toolkit::ValueMap outputBin() const { return outputBin_; } ///< the pending choices, option by option
    void setOutputBin(const std::optional<toolkit::ValueMap>& bin) { outputBin_ = bin.value_or(toolkit::ValueMap()); }
    [[nodiscard]] std::uint32_t imageModeFlag() const { return imageModeFlag_; } ///< bits of ImageModeFlag

    /// Sends an operation by its message name.
    framework::MessageResult sendMessage(std::string_view name, std::span<const framework::MessageValue> arguments);
    /// The models of the panel's view description and what belongs to them; null until panelView() loaded them.
    [[nodiscard]] const toolkit::LoadedViews* loadedViews() const { return views_.get(); }
    /// @cond For panels.
protected:
    /// Messages and outlets: each class lists its own, and then its base's.
    using MessageTables = std::vector<std::span<const PanelMessage>>;
    using OutletTables = std::vector<std::span<const PanelOutlet>>;
    [[nodiscard]] virtual MessageTables messageTables() const;
    [[nodiscard]] virtual OutletTables outletTables() const;

    // Option values (values.cpp).
    virtual void setPPDKeys(const std::optional<std::vector<std::string>>& keys);
    virtual void saveAllValues();
    virtual void requestNewOutputBin(toolkit::View* sender);
    virtual void revertUIForKey(toolkit::View* control, const std::optional<std::string>& key);
    virtual void updateUI();
    virtual void updateUIforKey(const std::optional<std::string>& key);
    virtual bool setAndMarkValueForKey(const std::optional<std::string>& value, const std::optional<std::string>& key);
    virtual void getUIValues();
    virtual std::optional<std::vector<std::string>> availablePPDOptionKeys();
    virtual void setDefaults() {}

    // Population (population.cpp).
    virtual void initializePopup();
    virtual std::optional<std::string> determineKey(toolkit::View* control);
    virtual toolkit::View* determineUI(const std::optional<std::string>& key);
    virtual toolkit::View* determineLabel(const std::optional<std::string>& key);

    // Constraints (constraints.cpp).
    virtual void checkConstraints() {}
    virtual void checkUIConstraints();
    virtual void checkModelName() {}
    virtual void changeResolutionLetterB() {}

    // Layout and disclosure (layout.cpp).
    virtual std::string optionName();
    virtual void saveOptionState();
    virtual void restoreOptionState();
    virtual void toggleShowOption(toolkit::View* sender);
    void adjustUIPositionForParts(double offset, const std::vector<toolkit::View*>& parts);
    void setViewFrameSize(const toolkit::Size& size);
    void dialogDidExpand(const toolkit::Notification& notification);
    void changeImageOfView(const std::optional<std::string>& name, toolkit::ImageView* view);

    // Help, colour matching, fax, alerts (help_and_checks.cpp).
    void checkColorSync();
    void checkFax();
    bool registerHelp();
    virtual std::optional<std::string> helpAnchor();
    virtual std::optional<std::string> helpBook();
    void showHelpFile(toolkit::View* sender);
    bool shouldShowAlert(const std::optional<std::string>& key);
    void alertDidEndReturnCodeContextInfo(const toolkit::AlertAnswer& alert, int returnCode,
                                          const std::optional<std::string>& key);
    void removeNotificationObserver(const toolkit::Notification& notification);

    // What the panels share beside the operations.
    [[nodiscard]] toolkit::Application& application() const { return pdePluginCallbackObject_->application(); }
    [[nodiscard]] std::string localizedString(std::string_view key) const { return pluginBundle->localizedString(key); }
    [[nodiscard]] bool hasFlag(ImageModeFlag bit) const { return (imageModeFlag_ & bit) != 0; }
    void setFlag(ImageModeFlag bit, bool on) { imageModeFlag_ = on ? imageModeFlag_ | bit : imageModeFlag_ & ~bit; }
    /// Whether PPDKeys holds the keyword.
    [[nodiscard]] bool managesKey(std::string_view key) const;
    /// PPDKeys, or an empty list while there is none.
    [[nodiscard]] const std::vector<std::string>& managedKeys() const;
    /// Whether the pending value of the key is exactly this text.
    [[nodiscard]] bool outputBinHolds(std::string_view key, std::string_view value) const;
    /// The pending value as a keyword; nullopt where there is none.
    [[nodiscard]] std::optional<std::string> outputBinKeyword(std::string_view key) const;
    /// The list of texts in the bundle's info dictionary; nullopt where there is none.
    [[nodiscard]] std::optional<std::vector<std::string>> keysInInfoEntry(std::string_view entry) const;
    /// The keyword of the choice that the PPD marks; nullopt where there is none.
    [[nodiscard]] std::optional<std::string> markedChoice(std::string_view option) const;
    /// PMPrintSettingsGetValue and PMPrintSettingsSetValue. Without print settings nothing is read and nothing stored.
    [[nodiscard]] std::optional<toolkit::Value> printSettingForKey(std::string_view key) const;
    void setPrintSettingForKey(printing::SettingValue value, std::string_view key);
    /// Observes on the default notification centre, by one of this panel's operations.
    template <typename Panel>
    void observe(std::string_view name, const toolkit::Object* sender,
                 void (Panel::*handler)(const toolkit::Notification&)) {
        auto* panel = static_cast<Panel*>(this);
        toolkit::NotificationCenter::defaultCenter().addObserver(
            shared_from_this(), name, sender,
            [panel, handler](const toolkit::Notification& notification) { (panel->*handler)(notification); });
    }
    /// Stores the user's answer to an alert's suppression box and saves it at once.
    void storeAlertSuppression(std::string_view key, bool suppressed);

    // Fields. Names without an underscore are those of no operation.
    framework::HostCallback* pdePluginCallbackObject_ = nullptr;
    std::optional<std::string> thePDEName_;
    toolkit::ValueMap outputBin_;
    std::optional<std::vector<std::string>> PPDKeys;
    std::uint32_t imageModeFlag_ = 0;
    std::optional<std::string> paperName;
    const printing::PrinterDescription* ppd = nullptr; ///< the host's; never null after initWithCallback()
    std::shared_ptr<toolkit::Bundle> pluginBundle;
    bool popupInited = false;
    std::shared_ptr<toolkit::KeyValueStore> effectContent; ///< null until the view description is loaded
    toolkit::View* panelView_ = nullptr;
    toolkit::CheckBox* optionButton = nullptr;

    // What a panel has to tell an inspection beside the fields of the base.
    [[nodiscard]] virtual toolkit::ValueMap ownFields() const { return {}; }
    [[nodiscard]] virtual std::optional<framework::PreviewState> preview() const { return std::nullopt; }
    /// @endcond
private:
    friend class framework::PanelInspection;

    void populateMatrix(toolkit::RadioMatrix& matrix, const printing::Option& option);
    void populatePopUp(toolkit::PopUpList& popup, const printing::Option& option);
    void showOptionText(toolkit::View* label, const printing::Option& option);
    void connectOutlets();

    std::unique_ptr<toolkit::LoadedViews> views_;
};
