#pragma once

#include "color_settings/CVInkColorSettingPDE.h"
#include "framework/panel_inspection.h"
#include "tests/support/test_host.h"

#include "toolkit/image_view.h"
#include "toolkit/number_field.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {
/// For the messages of failing tests.
void PrintTo(const Value& value, std::ostream* stream);
} // namespace toolkit

namespace color_settings_tests {

inline constexpr std::array<std::string_view, 5> kAdjustmentKeys = {"CVBrightness", "CVContrast", "CVRed", "CVGreen",
                                                                    "CVBlue"};
inline constexpr std::array<std::string_view, 5> kSettingKeys = {
    "com.corvane.print.PrintSettings.CEV_Brightness", "com.corvane.print.PrintSettings.CEV_Contrast",
    "com.corvane.print.PrintSettings.CEV_Red", "com.corvane.print.PrintSettings.CEV_Green",
    "com.corvane.print.PrintSettings.CEV_Blue"};

inline constexpr std::string_view kNotificationName = "CVInkPrintSettingNotification";

inline constexpr std::uint32_t kMatching = 0x1, kMono = 0x2, kFaxOutput = 0x200, kShown = 0x2000,
                               kDiffusionPattern = 0x10000;

/// The lines that make a PPD offer the driver's colour matching.
inline constexpr const char* kMatchingAttribute = "*APSupportsCustomColorMatching: True\n";

/// The five adjustment options of a small PPD with this default each, and a choice of the same keyword.
std::string adjustmentOptions(const std::string& defaultChoice);

/// A panel and its host, and a look at what the panel holds. Nothing is made before makePanel().
class ColorPanelTest : public testing::Test {
protected:
    ColorPanelTest();

    /// Another host, for the text of another PPD; before makePanel().
    void useHost(const std::string& ppdText) { host = std::make_unique<tests::TestHost>(ppdText); }
    /// The bundle's view of the host with these texts and info entries.
    void useBundle(std::map<std::string, std::string, std::less<>> strings, toolkit::ValueMap info,
                   std::vector<std::string> removedInfo = {});
    void makePanel();
    /// The panel, and its models.
    void makePanelWithView();
    /// The panel, its models, restored from the PPD and brought to the front.
    void showPanel();

    /// Sends an operation; fails the test where it is not sent.
    framework::MessageValue send(std::string_view name, const std::vector<framework::MessageValue>& arguments = {});
    /// The result as a plain value; fails the test where it is another.
    toolkit::Value sendForValue(std::string_view name, const std::vector<framework::MessageValue>& arguments = {});
    /// The result as a picture.
    std::optional<imaging::Picture> sendForPicture(std::string_view name,
                                                   const std::vector<framework::MessageValue>& arguments);

    [[nodiscard]] toolkit::Value field(std::string_view name) const;
    [[nodiscard]] toolkit::Value pending(std::string_view key) const; ///< of outputBin
    [[nodiscard]] toolkit::Value stored(std::string_view key) const;  ///< of effectContent
    /// A text of the print settings: "(none)" where nothing is stored, "(no text)" where something else is.
    [[nodiscard]] std::string setting(std::string_view key) const;
    [[nodiscard]] toolkit::Value lastChange() const { return field("effectVal"); } ///< [tag, value]

    void setFlags(std::uint32_t bits, bool on);
    [[nodiscard]] bool hasFlags(std::uint32_t bits) const { return (panel->imageModeFlag() & bits) == bits; }
    void setPending(std::string_view key, const toolkit::Value& value);
    void setStored(std::string_view key, const toolkit::Value& value);
    void setSetting(std::string_view key, printing::SettingValue value);
    /// Posts the notification between the panels, from this panel's host.
    void tell(std::optional<toolkit::ValueMap> userInfo);

    template <typename Model>
    [[nodiscard]] Model& model(std::string_view name) const {
        auto* view = dynamic_cast<Model*>(panel->loadedViews()->viewNamed(name));
        if (view == nullptr)
            throw std::runtime_error("no model " + std::string(name));
        return *view;
    }
    /// How many pictures the preview has shown.
    [[nodiscard]] std::int64_t drawn() const { return model<toolkit::ImageView>("effectImageView").imageCount(); }
    [[nodiscard]] framework::PreviewState preview() const { return *inspection.previewOfPanel(*panel); }
    /// The filters of the shown picture, in the order in which the pixels pass them.
    [[nodiscard]] std::vector<imaging::Filter> shownFilters() const;

    const framework::PanelInspection inspection{{}};
    std::unique_ptr<tests::TestHost> host;
    std::shared_ptr<CVInkColorSettingPDE> panel;
};

/// The plain grey rendering.
imaging::ColorMonochrome grey();

/// A picture of one grey pixel.
imaging::Picture pictureNamed(const std::string& name);

} // namespace color_settings_tests
