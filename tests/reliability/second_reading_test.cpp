// The panel against the second reading of its tables, over all inputs.

#include "tests/reliability/second_reading.h"

#include "print_settings/paper_loading.h"
#include "print_settings/paper_names.h"
#include "tests/print_settings/print_setting_panel.h"

namespace {

using print_settings_tests::PrintSettingPanel;

constexpr int kLargestSide = 1500; // points

// Printers whose limits fall between, on and beyond the fixed bounds.
constexpr second_reading::SizeLimits kLimits[] = {
    {252, 900, 1400},  // the sample printer
    {0, 0, 0},         // a printer without free sizes
    {360, 612, 842},   // on the bounds
    {361, 611, 841},   // just within them
    {359, 613, 843},   // just without them
    {700, 1400, 1400}, // nothing narrow
    {100, 300, 700},   // nothing wide
    {252.5F, 899.5F, 1000.25F},
};

char letterOf(paper_loading::Loading loading) {
    using enum paper_loading::Loading;
    return loading == Landscape ? 'L' : loading == Portrait ? 'P' : loading == ByHand ? 'M' : 'U';
}

TEST(SecondReading, PapersAnswerTheirQuestionsAlike) {
    using namespace second_reading;
    for (const std::string& keyword : papersAndTheirLikes()) {
        const std::string expected = questionsOfPaper(keyword);
        for (const PaperQuestion question : kPaperQuestions) {
            const auto ask = question == kPostcard     ? paper_names::isKindOfPostcardPaperSize
                             : question == kTray2      ? paper_names::allowTray2PaperSize
                             : question == kLandscape  ? paper_names::isKindOfLandscapePaper
                             : question == kPortrait   ? paper_names::isKindOfPortraitPaper
                             : question == kManualFeed ? paper_names::isKindOfManualFeedPaper
                                                       : paper_names::isKindOfJPEnvelope;
            EXPECT_EQ(ask(keyword), expected.find(question) != std::string::npos) << keyword << ' ' << question;
            EXPECT_FALSE(ask(std::nullopt));
        }
    }
}

TEST(SecondReading, BorderlessPapersHaveTheSameBases) {
    const std::vector<std::string> papers = second_reading::papersAndTheirLikes();
    long compared = 0, borderless = 0;
    for (const std::string& paper : papers) {
        const std::set<std::string> bases = second_reading::basesOfBorderlessPaper(paper);
        for (const std::string& base : papers) {
            const bool expected = bases.contains(base);
            ASSERT_EQ(paper_names::isBorderelessForPaperSize(paper, base), expected) << paper << " of " << base;
            ++compared;
            borderless += expected ? 1 : 0;
        }
    }
    EXPECT_GT(borderless, 100);
    RecordProperty("compared", std::to_string(compared));
}

TEST(SecondReading, MediaAreThePlainOnesAlike) {
    for (const std::string& media : second_reading::mediaAndTheirLikes())
        EXPECT_EQ(paper_names::isKindOfPlainPaper(media), second_reading::isPlainPaper(media)) << media;
}

TEST(SecondReading, EverySizeUpToFifteenHundredPointsIsLoadedAlike) {
    for (const second_reading::SizeLimits& limits : kLimits) {
        const printing::CustomSizeLimits panels{
            .minWidth = limits.minWidth, .minHeight = 0, .maxWidth = limits.maxWidth, .maxHeight = limits.maxHeight};
        for (int width = 0; width <= kLargestSide; ++width)
            for (int height = 0; height <= kLargestSide; ++height)
                ASSERT_EQ(letterOf(paper_loading::loadingForSize(width, height, panels)),
                          second_reading::alertForSize(width, height, limits))
                    << width << " x " << height << ", limits " << limits.minWidth << " to " << limits.maxWidth << " x "
                    << limits.maxHeight;
    }
}

class SecondReadingOfThePanel : public PrintSettingPanel {
protected:
    SecondReadingOfThePanel() { makePanelWithView(); }

    // What checking the paper before printing showed: one letter, or '-' for nothing.
    char shownAlert() {
        host->log.clear();
        const bool goes = panel->checkPaperAndShowOrientationAlert();
        char shown = '-';
        for (const std::string& entry : host->log)
            if (entry == "window envAlertWindow")
                shown = 'E';
            else if (entry == "window normalPaperAlertWindow")
                shown = label("normalPaperInstructionLabel").text()[0];
            else if (entry == "window customPaperAlertWindow")
                shown = label("customPaperInstructionLabel").text()[0];
            else if (entry == "panel Unsupported Paper Title")
                shown = 'U';
        EXPECT_EQ(goes, shown != 'U');
        const auto orientation = host->settings->valueForKey("com.corvane.print.PrintSettings.Orientation");
        EXPECT_EQ(printing::optionText(orientation.value()), shown == 'L' ? "Landscape" : "Portrait");
        return shown;
    }
};

TEST_F(SecondReadingOfThePanel, SidesOnAndBesideTheBoundsGetTheSameAlert) {
    const second_reading::SizeLimits& limits = kLimits[0];
    std::vector<int> sides = {0, 1, kLargestSide};
    for (const int bound : {252, 360, 612, 842, 900, 1400})
        for (const int beside : {-1, 0, 1})
            sides.push_back(bound + beside);
    panel->paperName = "Custom";
    for (const int width : sides)
        for (const int height : sides)
            for (const double part : {-0.5, -0.4, 0.0, 0.4}) { // all round to the whole side; halves away from zero
                setCustomPaper("Custom", width + part, height + part);
                EXPECT_EQ(shownAlert(), second_reading::alertForSize(width, height, limits))
                    << width + part << " x " << height + part;
            }
}

TEST_F(SecondReadingOfThePanel, EveryPaperGetsTheAlertOfItsFirstQuestion) {
    using namespace second_reading;
    setCustomPaper("Custom", 400, 500); // portrait, where the name decides nothing
    for (const std::string& paper : papersAndTheirLikes()) {
        panel->paperName = paper;
        char expected = paper == "UnsupportedPaper" ? 'U' : 'P';
        const std::string questions = questionsOfPaper(paper);
        for (const auto& [question, alert] :
             {std::pair{kManualFeed, 'M'}, {kPortrait, 'P'}, {kLandscape, 'L'}, {kJapaneseEnvelope, 'E'}})
            if (questions.find(question) != std::string::npos)
                expected = alert;
        EXPECT_EQ(shownAlert(), expected) << paper;
    }
}

TEST_F(SecondReadingOfThePanel, QualitiesAreAllowedAlike) {
    for (const std::string& media : second_reading::mediaAndTheirLikes())
        for (const bool twoSided : {false, true})
            for (const bool disc : {false, true}) {
                SCOPED_TRACE(media + (twoSided ? " two-sided" : "") + (disc ? " disc" : ""));
                setFlags((twoSided ? kImageModeDuplex : 0U) | (disc ? kImageModePrintableDisc : 0U));
                panel->setOutputBin(toolkit::ValueMap{{"CVMediaType", "Before"}});
                host->log.clear();
                EXPECT_EQ(panel->allowedQuality(media), second_reading::allowedQualities(media, twoSided, disc));
                const std::string replacement = second_reading::replacementOfMedia(media, disc);
                std::vector<std::string> asked;
                if (!replacement.empty())
                    asked = {(disc ? "refuse CVMediaType=" : "ask CVMediaType=") + replacement, // no discs here
                             "ask CVResolution=" + second_reading::defaultQuality(replacement, "A4")};
                EXPECT_EQ(host->log, asked);
            }
}

TEST_F(SecondReadingOfThePanel, DefaultQualitiesAreAlike) {
    for (const std::string& paper : second_reading::papersAndTheirLikes()) {
        panel->paperName = paper;
        for (const std::string& media : second_reading::mediaAndTheirLikes())
            ASSERT_EQ(panel->defaultQualityForMediaType(media), second_reading::defaultQuality(media, paper))
                << media << " on " << paper;
    }
    panel->paperName.reset();
    for (const std::string& media : second_reading::mediaAndTheirLikes())
        EXPECT_EQ(panel->defaultQualityForMediaType(media), second_reading::defaultQuality(media, "")) << media;
}

} // namespace
