#include "tests/print_settings/print_setting_panel.h"

#include <functional>

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum class Loading { Landscape, Portrait, ByHand, Unsupported };

struct SizeRow {
    double width, height;
    Loading loading;
};

class CustomSizes : public PrintSettingPanel {
protected:
    CustomSizes() { makePanelWithView(); }

    bool check(std::optional<double> width, std::optional<double> height) {
        setCustomPaper("Custom", width, height);
        panel->paperName = "Custom.size";
        return panel->checkPaperAndShowOrientationAlert();
    }
    std::string orientation() {
        const auto stored = host->settings->valueForKey("com.corvane.print.PrintSettings.Orientation");
        return stored ? std::get<std::string>(*stored) : "";
    }
    std::string picture() {
        const auto& shown = view<toolkit::ImageView>("customPaperAlertImageView").image();
        return shown ? shown->name.value_or("unnamed") : "none";
    }
    // A printer that takes custom sizes within these points.
    void openPrinterTaking(int minWidth, int maxWidth, int minHeight, int maxHeight) {
        const auto range = [](int low, int high) { return std::to_string(low) + " " + std::to_string(high) + "\n"; };
        openHost(tests::ppdWith("*VariablePaperSize: True\n*MaxMediaWidth: \"" + std::to_string(maxWidth) +
                                "\"\n*MaxMediaHeight: \"" + std::to_string(maxHeight) +
                                "\"\n*HWMargins: 0 0 0 0\n*CustomPageSize True: \"pop\"\n"
                                "*ParamCustomPageSize Width: 1 points " +
                                range(minWidth, maxWidth) + "*ParamCustomPageSize Height: 2 points " +
                                range(minHeight, maxHeight) +
                                tests::ppdOption("CVReverse", "Reverse", "OFF", {"OFF/Off", "ON/On"})));
        makePanelWithView();
    }
    void expectRows(const std::vector<SizeRow>& rows) {
        for (const SizeRow& row : rows) {
            SCOPED_TRACE(testing::Message() << row.width << " x " << row.height);
            const bool go = check(row.width, row.height);
            if (row.loading == Loading::Unsupported) {
                EXPECT_FALSE(go);
                EXPECT_THAT(host->takeLog(), ElementsAre("panel Unsupported Paper Title"));
                EXPECT_EQ(orientation(), "Portrait");
                continue;
            }
            const std::string way = row.loading == Loading::Landscape  ? "Landscape"
                                    : row.loading == Loading::Portrait ? "Portrait"
                                                                       : "Manual";
            EXPECT_TRUE(go);
            EXPECT_THAT(host->takeLog(), ElementsAre("window customPaperAlertWindow"));
            EXPECT_EQ(label("customPaperInstructionLabel").text(), way + " Instruction");
            EXPECT_EQ(picture(), way);
            EXPECT_EQ(orientation(), way == "Landscape" ? "Landscape" : "Portrait");
            EXPECT_TRUE(view<toolkit::Window>("customPaperAlertWindow").isHidden());
        }
    }
};

// The sample printer takes 252 to 900 by 360 to 1400 points.
TEST_F(CustomSizes, TheSizeDecidesHowASheetIsLoaded) {
    using enum Loading;
    expectRows({
        // as wide as 360 to 612 and higher than that, up to 842
        {400, 700, Landscape},
        {360, 613, Landscape},
        {360, 842, Landscape},
        {612, 613, Landscape},
        {612, 842, Landscape},
        // any width of the printer's, 360 to 612 high
        {400, 500, Portrait},
        {252, 360, Portrait},
        {252, 612, Portrait},
        {900, 360, Portrait},
        {900, 612, Portrait},
        {360, 612, Portrait},
        {251, 500, Unsupported},
        {901, 500, Unsupported},
        {400, 359, Unsupported},
        // any width of the printer's, higher than 842
        {400, 843, ByHand},
        {252, 843, ByHand},
        {900, 843, ByHand},
        {900, 1400, ByHand},
        {251, 900, Unsupported},
        {901, 900, Unsupported},
        {400, 1401, Unsupported},
        // narrow, and higher than 612, up to 842
        {300, 700, ByHand},
        {252, 613, ByHand},
        {359, 842, ByHand},
        {251, 700, Unsupported},
        // wide, and higher than 612, up to 842
        {700, 700, ByHand},
        {613, 613, ByHand},
        {613, 842, ByHand},
        {900, 842, ByHand},
        {901, 700, Unsupported},
        // beyond everything
        {1000, 1000, Unsupported},
        {0, 0, Unsupported},
        {1000, 100, Unsupported},
    });
}

TEST_F(CustomSizes, SidesAreRoundedHalvesAwayFromZero) {
    using enum Loading;
    expectRows({
        {359.6, 700, Landscape},
        {359.5, 700, Landscape},
        {359.49, 700, ByHand},
        {612.49, 700, Landscape},
        {612.5, 700, ByHand},
        {400, 612.49, Portrait},
        {400, 612.5, Landscape},
        {400, 842.49, Landscape},
        {400, 842.5, ByHand},
        {251.5, 500, Portrait},
        {251.49, 500, Unsupported},
        {900.49, 500, Portrait},
        {900.5, 500, Unsupported},
        {400, 359.5, Portrait},
        {400, 1400.5, Unsupported},
    });
}

TEST_F(CustomSizes, ASizeNarrowerThanThePrinterTakesMayStillBeLandscapeOrWide) {
    using enum Loading;
    openPrinterTaking(650, 900, 360, 1400);
    expectRows({
        {400, 700, Landscape},
        {630, 700, ByHand},
        {400, 500, Unsupported},
        {400, 900, Unsupported},
        {300, 700, Unsupported},
        {650, 500, Portrait},
    });
}

TEST_F(CustomSizes, ASizeWiderThanThePrinterTakesMayStillBeLandscape) {
    using enum Loading;
    openPrinterTaking(200, 500, 300, 700);
    expectRows({
        {600, 800, Landscape},
        {600, 500, Unsupported},
        {613, 700, Unsupported},
        {500, 500, Portrait},
        {400, 843, Unsupported},
    });
}

TEST_F(CustomSizes, CancelStopsPrinting) {
    for (const SizeRow& row : {SizeRow{400, 700, Loading::Landscape}, SizeRow{400, 500, Loading::Portrait},
                               SizeRow{400, 900, Loading::ByHand}}) {
        SCOPED_TRACE(testing::Message() << row.width << " x " << row.height);
        host->windowCodes = {0};
        EXPECT_FALSE(check(row.width, row.height));
        EXPECT_EQ(orientation(), "Portrait");
        EXPECT_TRUE(view<toolkit::Window>("customPaperAlertWindow").isHidden());
    }
}

TEST_F(CustomSizes, TheAlertIsNeverSuppressed) {
    const toolkit::ValueMap stored = {
        {"Landscape Instruction", false}, {"Manual Instruction", false}, {"Portrait Instruction", false}};
    host->defaults.setPersistentDomainForName(stored, "com.corvane.print.pde.CVInkQuality12");
    box("suppressionButton").setOn(false);
    EXPECT_TRUE(check(400, 700));
    EXPECT_TRUE(check(400, 500));
    EXPECT_TRUE(check(400, 900));
    EXPECT_THAT(host->takeLog(), ElementsAre("window customPaperAlertWindow", "window customPaperAlertWindow",
                                             "window customPaperAlertWindow"));
    EXPECT_EQ(host->defaults.persistentDomainForName("com.corvane.print.pde.CVInkQuality12"), stored);
}

TEST_F(CustomSizes, ASizeThatCannotBeReadStopsPrintingSilently) {
    struct Row {
        std::string missing;
        std::function<void(tests::TestHost&)> take;
    };
    const std::vector<Row> rows = {
        {"the operation for the page format", [](tests::TestHost& each) { each.lacking = {"pageFormat"}; }},
        {"the page format", [](tests::TestHost& each) { each.format.reset(); }},
        {"the paper", [](tests::TestHost& each) { each.format->paper.reset(); }},
        {"the width", [](tests::TestHost& each) { each.format->paper->width.reset(); }},
        {"the height", [](tests::TestHost& each) { each.format->paper->height.reset(); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("Without " + row.missing);
        openHost(tests::samplePpd("corvane-a3"));
        makePanelWithView();
        setCustomPaper("Custom", 400, 700);
        row.take(*host);
        panel->paperName = "Custom.400x700";
        EXPECT_FALSE(panel->checkPaperAndShowOrientationAlert());
        EXPECT_THAT(host->takeLog(), IsEmpty());
        EXPECT_EQ(orientation(), "Portrait");
    }
}

TEST_F(CustomSizes, WithoutTheOperationForPrintSettingsTheSizeIsNotRead) {
    host->lacking = {"printSettings"};
    EXPECT_FALSE(check(400, 700));
    EXPECT_THAT(host->takeLog(), ElementsAre("panel Unsupported Paper Title"));
}

TEST_F(CustomSizes, MissingPrintSettingsDoNotKeepTheSizeFromBeingRead) {
    host->settings.reset();
    EXPECT_TRUE(check(400, 700));
    EXPECT_THAT(host->takeLog(), ElementsAre("window customPaperAlertWindow"));
}

TEST_F(CustomSizes, NoPaperAtAllCountsAsACustomSize) {
    setCustomPaper("A4", 400, 700);
    panel->paperName.reset();
    EXPECT_TRUE(panel->checkPaperAndShowOrientationAlert());
    EXPECT_THAT(host->takeLog(), ElementsAre("window customPaperAlertWindow"));
    EXPECT_EQ(orientation(), "Landscape");
}

} // namespace
} // namespace print_settings_tests
