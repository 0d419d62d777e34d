#include "framework/panel_inspection.h"
#include "tests/print_settings/print_setting_panel.h"

namespace print_settings_tests {
namespace {

using testing::ElementsAre;

struct Row {
    std::string keyword, control, label; ///< without a label: empty
};

// What every printer's panel binds; mirror printing and the dedicated media depend on the printer and the language.
const std::vector<Row>& rows() {
    static const std::vector<Row> all = {
        {"CVResolution", "resolutionPopup", "resolutionLabel"},
        {"CVMediaType", "mediaTypePopup", "mediaTypeLabel"},
        {"CVColorPaperThick", "paperThickPopup", "paperThickLabel"},
        {"CVInputSlot", "paperFeedPopup", "paperFeedLabel"},
        {"CVMonoColor", "monoColorPopup", "monoColorLabel"},
        {"CVSlowDrying", "slowDryButton", ""},
        {"CVBiDir", "biDirButton", ""},
        {"CVReverse", "reverseButton", ""},
        {"CVJpeg", "jpegPopup", "jpegLabel"},
        {"CVDuplexMode", "duplexPopup", "duplexLabel"},
        {"CVVertLineAlignA3B4Ledger", "vertLineAlignA3Button", ""},
        {"CVVertLineAlignA4Letter", "vertLineAlignA4Button", ""},
        {"CVVertLineAlignOther", "vertLineAlignOtherButton", ""},
    };
    return all;
}

class PrintSettingBindings : public PrintSettingPanel {
protected:
    toolkit::View* named(const std::string& name) { return panel->loadedViews()->viewNamed(name); }
    std::optional<std::string> keyOf(const std::string& control) { return panel->determineKey(named(control)); }
};

TEST_F(PrintSettingBindings, EachOptionHasItsControl) {
    makePanelWithView();
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.keyword);
        ASSERT_NE(named(row.control), nullptr);
        EXPECT_EQ(panel->determineUI(row.keyword), named(row.control));
    }
}

TEST_F(PrintSettingBindings, EachControlHasItsOption) {
    makePanelWithView();
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.control);
        EXPECT_EQ(keyOf(row.control), row.keyword);
    }
}

TEST_F(PrintSettingBindings, OnlyPopUpsHaveLabels) {
    makePanelWithView();
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.keyword);
        EXPECT_EQ(panel->determineLabel(row.keyword), row.label.empty() ? nullptr : named(row.label));
    }
    for (const char* keyword : {"MirrorPrint", "CVMirror", "CVVertLineAlignDedicated"}) {
        SCOPED_TRACE(keyword);
        EXPECT_EQ(panel->determineLabel(keyword), nullptr);
    }
}

TEST_F(PrintSettingBindings, BothMirrorOptionsShareOneControl) {
    makePanelWithView();
    ASSERT_NE(named("mirrorButton"), nullptr);
    EXPECT_EQ(panel->determineUI("MirrorPrint"), named("mirrorButton"));
    EXPECT_EQ(panel->determineUI("CVMirror"), named("mirrorButton"));
}

TEST_F(PrintSettingBindings, TheMirrorControlMeansTheOptionThatThePrinterHas) {
    makePanelWithView();
    EXPECT_EQ(keyOf("mirrorButton"), "MirrorPrint");
    openHost(tests::samplePpd("corvane-mirror"));
    makePanelWithView();
    EXPECT_EQ(keyOf("mirrorButton"), "CVMirror");
}

TEST_F(PrintSettingBindings, TheMirrorControlOfAPrinterWithBothOptionsMeansTheDriversOwn) {
    makePanelWithView();
    panel->PPDKeys = {"MirrorPrint", "CVMirror"};
    EXPECT_EQ(keyOf("mirrorButton"), "CVMirror");
    panel->PPDKeys.reset();
    EXPECT_EQ(keyOf("mirrorButton"), "MirrorPrint");
}

TEST_F(PrintSettingBindings, TheDedicatedMediaAreBoundInJapaneseOnly) {
    struct LanguageRow {
        std::vector<std::string> languages;
        bool bound;
    };
    const std::vector<LanguageRow> languageRows = {
        {{"ja"}, true},     {{"ja", "en"}, true}, {{"en"}, false}, {{"en", "ja"}, false},
        {{"ja-JP"}, false}, {{"JA"}, false},      {{"j"}, false},
    };
    for (const LanguageRow& row : languageRows) {
        SCOPED_TRACE(testing::PrintToString(row.languages));
        openHost(tests::samplePpd("corvane-a3"), row.languages);
        makePanelWithView();
        toolkit::View* const button = named("vertLineAlignQT22Button");
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(panel->determineUI("CVVertLineAlignDedicated"), row.bound ? button : nullptr);
        EXPECT_EQ(panel->determineKey(button),
                  row.bound ? std::optional<std::string>("CVVertLineAlignDedicated") : std::nullopt);
    }
}

TEST_F(PrintSettingBindings, UnknownControlsAndKeywordsAreBoundToNothing) {
    makePanelWithView();
    toolkit::PopUpList stranger("mediaTypePopup"); // known by identity, not by name
    EXPECT_EQ(panel->determineKey(&stranger), std::nullopt);
    EXPECT_EQ(panel->determineKey(panel->optionButton), std::nullopt);
    EXPECT_EQ(panel->determineKey(nullptr), std::nullopt);
    for (const std::optional<std::string>& keyword :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("cvmediatype"),
          std::optional<std::string>("CVMediaTyp"), std::optional<std::string>("CVMediaType "),
          std::optional<std::string>("CVColorMatching"), std::optional<std::string>("Duplex")}) {
        SCOPED_TRACE(keyword.value_or("null"));
        EXPECT_EQ(panel->determineUI(keyword), nullptr);
        EXPECT_EQ(panel->determineLabel(keyword), nullptr);
    }
}

TEST_F(PrintSettingBindings, BeforeTheViewIsLoadedNothingIsBound) {
    makePanel();
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.keyword);
        EXPECT_EQ(panel->determineUI(row.keyword), nullptr);
        EXPECT_EQ(panel->determineLabel(row.keyword), nullptr);
    }
    EXPECT_EQ(panel->determineKey(nullptr), std::nullopt);
}

TEST_F(PrintSettingBindings, EachOutletFindsAViewOfItsName) {
    makePanelWithView();
    const framework::PanelInspection inspection({});
    for (const std::string_view outlet : inspection.outletsOfPanel(*panel)) {
        SCOPED_TRACE(std::string(outlet));
        toolkit::View* const found = panel->loadedViews()->viewNamed(outlet);
        ASSERT_NE(found, nullptr);
        EXPECT_TRUE(inspection.connectOutlet(*panel, outlet, *found));
    }
}

TEST_F(PrintSettingBindings, TheOperationsAreSentByTheirNames) {
    makePanelWithView();
    const auto send = [&](std::string_view name, const std::vector<framework::MessageValue>& arguments) {
        const framework::MessageResult result = panel->sendMessage(name, arguments);
        EXPECT_EQ(result.error, "");
        return result.value.value_or(framework::MessageValue());
    };
    const framework::MessageValue media{toolkit::Value("Transparencies")};
    const auto qualities = std::get<framework::MessageList>(send("allowedQuality:", {media}).content);
    ASSERT_EQ(qualities.size(), 1);
    EXPECT_EQ(std::get<toolkit::Value>(qualities.front().content), toolkit::Value("Normal"));
    EXPECT_EQ(std::get<toolkit::Value>(send("defaultQualityForMediaType:", {media}).content), toolkit::Value("Normal"));
    EXPECT_EQ(std::get<toolkit::Value>(send("firstLanguageSetting", {}).content), toolkit::Value("en"));
    EXPECT_EQ(std::get<toolkit::View*>(send("determineUI:", {{toolkit::Value("CVReverse")}}).content),
              named("reverseButton"));
    host->log.clear();
    send("setDefaultQuality:", {media});
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVResolution=Normal"));
}

} // namespace
} // namespace print_settings_tests
