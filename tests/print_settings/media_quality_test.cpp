#include "tests/print_settings/print_setting_panel.h"

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Keywords = std::vector<std::string>;

const Keywords kPlainQualities = {"PlainFast", "PlainNormal", "High", "Best"};
const Keywords kTwoSidedQualities = {"PlainFast", "PlainNormal", "Best"};
const Keywords kMatteQualities = {"Normal", "Photo"};
const Keywords kGlossyQualities = {"Fast", "Photo", "Best"};
const Keywords kTransparencyQualities = {"Normal"};

class MediaQuality : public PrintSettingPanel {
protected:
    // A panel with nothing pending and these bits.
    void makeWith(std::uint32_t word) {
        makePanel();
        panel->setOutputBin(toolkit::ValueMap());
        setFlags(word);
    }
};

TEST_F(MediaQuality, EachMediumAllowsItsQualitiesInOrder) {
    struct Row {
        std::string media;
        Keywords oneSided, twoSided;
    };
    const std::vector<Row> rows = {
        {"Plain", kPlainQualities, kTwoSidedQualities},
        {"PlainDuplex", kPlainQualities, kTwoSidedQualities},
        {"HagakiAtena", kPlainQualities, kTwoSidedQualities},
        {"Inkjet", kMatteQualities, kMatteQualities},
        {"CorvaneQT20Matte", kMatteQualities, kMatteQualities},
        {"CorvaneGlossy", kGlossyQualities, kGlossyQualities},
        {"CorvaneGlossyR", kGlossyQualities, kGlossyQualities},
        {"Glossy", kGlossyQualities, kGlossyQualities},
        {"HagakiUra", kGlossyQualities, kGlossyQualities},
        {"Transparencies", kTransparencyQualities, kTransparencyQualities},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.media);
        makeWith(0);
        EXPECT_EQ(panel->allowedQuality(row.media), row.oneSided);
        makeWith(kImageModeDuplex);
        EXPECT_EQ(panel->allowedQuality(row.media), row.twoSided);
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(MediaQuality, AnUnknownMediumIsReplacedByPlainPaper) {
    const std::vector<std::optional<std::string>> unknown = {
        "PhotoPaper", "plain", "Plain ", "glossy", "", "PrintableDisc", "GlossyPrintableDisc", std::nullopt};
    for (const auto& media : unknown) {
        SCOPED_TRACE(media.value_or("null"));
        makeWith(0);
        EXPECT_EQ(panel->allowedQuality(media), kPlainQualities);
        EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=Plain", "ask CVResolution=PlainNormal"));
        makeWith(kImageModeDuplex);
        EXPECT_EQ(panel->allowedQuality(media), kTwoSidedQualities);
        EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=Plain", "ask CVResolution=PlainNormal"));
    }
}

TEST_F(MediaQuality, AnUnknownMediumOnBorderlessA3TakesTheBestQuality) {
    makeWith(0);
    panel->paperName = "A3.Fullbleed";
    panel->allowedQuality("PhotoPaper");
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=Plain", "ask CVResolution=Best"));
}

TEST_F(MediaQuality, DiscsHaveQualitiesOfTheirOwn) {
    openHost(tests::ppdWith(
        tests::ppdOption("CVMediaType", "Media", "Plain", {"Plain/Plain", "PrintableDisc/Disc", "Glossy/Glossy"}) +
        tests::ppdOption("CVResolution", "Quality", "PlainNormal", {"PlainNormal/Normal", "Photo/Photo"})));
    const Keywords discQualities = {"DiscNormal", "DiscSlow"};
    for (const std::uint32_t duplex : {0U, std::uint32_t{kImageModeDuplex}}) {
        SCOPED_TRACE(duplex);
        makeWith(kImageModePrintableDisc | duplex);
        EXPECT_EQ(panel->allowedQuality("PrintableDisc"), discQualities);
        EXPECT_THAT(panel->allowedQuality("GlossyPrintableDisc"), ElementsAre("DiscNormal"));
        EXPECT_THAT(host->takeLog(), IsEmpty());
        for (const std::optional<std::string>& media :
             {std::optional<std::string>("Plain"), std::optional<std::string>("Glossy"),
              std::optional<std::string>("Transparencies"), std::optional<std::string>("printableDisc"),
              std::optional<std::string>()}) {
            SCOPED_TRACE(media.value_or("null"));
            makeWith(kImageModePrintableDisc | duplex);
            EXPECT_EQ(panel->allowedQuality(media), discQualities);
            EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=PrintableDisc", "ask CVResolution=Photo"));
        }
    }
}

TEST_F(MediaQuality, EachMediumHasADefaultQuality) {
    struct Row {
        std::optional<std::string> media;
        std::string quality, onBorderlessA3;
    };
    const std::vector<Row> rows = {
        {"Plain", "PlainNormal", "Best"},       {"PlainDuplex", "PlainNormal", "Best"},
        {"HagakiAtena", "PlainNormal", "Best"}, {"Transparencies", "Normal", "Normal"},
        {"Inkjet", "Photo", "Photo"},           {"CorvaneQT20Matte", "Photo", "Photo"},
        {"CorvaneGlossy", "Photo", "Photo"},    {"CorvaneGlossyR", "Photo", "Photo"},
        {"Glossy", "Photo", "Photo"},           {"HagakiUra", "Photo", "Photo"},
        {"PrintableDisc", "Photo", "Photo"},    {"GlossyPrintableDisc", "Photo", "Photo"},
        {"PhotoPaper", "Photo", "Photo"},       {"transparencies", "Photo", "Photo"},
        {std::nullopt, "Photo", "Photo"},
    };
    makePanel();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.media.value_or("null"));
        panel->paperName = "A4.Fullbleed";
        EXPECT_EQ(panel->defaultQualityForMediaType(row.media), row.quality);
        panel->paperName = "A3.Fullbleed";
        EXPECT_EQ(panel->defaultQualityForMediaType(row.media), row.onBorderlessA3);
        panel->paperName.reset();
        EXPECT_EQ(panel->defaultQualityForMediaType(row.media), row.quality);
    }
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(MediaQuality, OnlyBorderlessVariantsOfA3CountAsBorderlessA3) {
    makePanel();
    for (const auto& [paper, borderless] :
         {std::pair("A3.Fullbleed", true), std::pair("A3.Fullbleed.Extra", true), std::pair("CvA3_B", true),
          std::pair("A3", false), std::pair("CvA3_S", false), std::pair("Tabloid.Fullbleed", false)}) {
        SCOPED_TRACE(paper);
        panel->paperName = paper;
        EXPECT_EQ(panel->defaultQualityForMediaType("Plain"), borderless ? "Best" : "PlainNormal");
    }
}

TEST_F(MediaQuality, TheColorModeIsToldInEveryCase) {
    struct Row {
        std::optional<std::string> mode;
        bool mono;
    };
    for (const Row& row : {Row{"Color", false}, Row{"Mono", true}, Row{"mono", false}, Row{"", false},
                           Row{"Sepia", false}, Row{std::nullopt, false}}) {
        SCOPED_TRACE(row.mode.value_or("none"));
        for (const std::uint32_t before : {0U, std::uint32_t{kImageModeMonochrome}}) {
            makeWith(before);
            if (row.mode)
                setPending("CVMonoColor", *row.mode);
            panel->canSelectColorMode();
            EXPECT_EQ(panel->hasFlag(kImageModeMonochrome), row.mono);
            EXPECT_THAT(host->takeLog(), ElementsAre(row.mono ? kPostedMono : kPostedColor));
        }
    }
}

TEST_F(MediaQuality, TheHostCallbackIsTheSenderAndTheEntriesHaveTheirKinds) {
    makePanel();
    std::vector<toolkit::Notification> heard;
    const auto observer = std::make_shared<const bool>();
    toolkit::NotificationCenter::defaultCenter().addObserver(
        observer, "CVInkPrintSettingNotification", nullptr,
        [&](const toolkit::Notification& notification) { heard.push_back(notification); });
    panel->canSelectColorMode();
    toolkit::NotificationCenter::defaultCenter().removeObserver(observer.get());
    ASSERT_EQ(heard.size(), 1);
    EXPECT_EQ(heard.front().sender, static_cast<const toolkit::Object*>(host.get()));
    EXPECT_EQ(heard.front().userInfo, (toolkit::ValueMap{{"CVMonoColor", false}, {"FromSetting", "CVMonoColor"}}));
}

TEST_F(MediaQuality, JpegPrintingBecomesAvailableWhateverTheState) {
    makePanel();
    setFlags(~0U);
    panel->canSelectJpegPrint();
    EXPECT_EQ(panel->imageModeFlag(), ~std::uint32_t{kImageModeJpegUnavailable});
    panel->canSelectJpegPrint();
    EXPECT_FALSE(panel->hasFlag(kImageModeJpegUnavailable));
}

// Controls that follow the media type

struct MediaRow {
    std::string media;
    bool slowDryingOffered; ///< with the driver's colour matching
    bool slowDryingOn, biDirOn, diffusion, transparency;
    Keywords qualities;
    std::string defaultQuality;
};

const std::vector<MediaRow>& mediaRows() {
    static const std::vector<MediaRow> rows = {
        // media            offered  slow   biDir  diff.  transp. qualities              default
        {"Plain", true, false, true, false, false, kPlainQualities, "PlainNormal"},
        {"PlainDuplex", false, false, true, true, false, kPlainQualities, "PlainNormal"},
        {"HagakiAtena", true, true, true, true, false, kPlainQualities, "PlainNormal"},
        {"HagakiUra", false, false, false, true, false, kGlossyQualities, "Photo"},
        {"Inkjet", false, false, false, true, false, kMatteQualities, "Photo"},
        {"CorvaneQT20Matte", false, false, false, true, false, kMatteQualities, "Photo"},
        {"CorvaneGlossy", false, false, false, true, false, kGlossyQualities, "Photo"},
        {"CorvaneGlossyR", false, false, false, true, false, kGlossyQualities, "Photo"},
        {"Glossy", false, false, false, true, false, kGlossyQualities, "Photo"},
        {"Transparencies", false, false, false, true, true, kTransparencyQualities, "Normal"},
    };
    return rows;
}

constexpr std::uint32_t kBitsOfMedia = kImageModeSlowDryingDisabled | kImageModeTransparency | kImageModeDiffusion;

class MediaControls : public PrintSettingPanel {
protected:
    // The panel shown with this medium selected; one that the pop-up does not list is added to it.
    void showWith(const std::string& media, std::uint32_t word) {
        showPanel();
        setFlags(word);
        toolkit::PopUpList& list = popup("mediaTypePopup");
        if (list.indexOfItemWithKeyword(media) < 0)
            addItems(list, {media});
        list.selectItemWithKeyword(media);
        setPending("CVMediaType", "Inkjet"); // what is shown counts, not what is pending
        setPending("CVResolution", "Photo");
    }
    std::uint32_t bitsOf(const MediaRow& row, bool vendorMatching) {
        return (vendorMatching && row.slowDryingOffered ? 0U : std::uint32_t{kImageModeSlowDryingDisabled}) |
               (row.transparency ? std::uint32_t{kImageModeTransparency} : 0U) |
               (row.diffusion ? std::uint32_t{kImageModeDiffusion} : 0U);
    }
};

TEST_F(MediaControls, AResetSetsWhatDependsOnTheMedium) {
    for (const MediaRow& row : mediaRows())
        for (const bool vendorMatching : {true, false}) {
            SCOPED_TRACE(row.media + (vendorMatching ? " with" : " without") + " the driver's colour matching");
            for (const std::uint32_t before : {0U, kBitsOfMedia}) {
                showWith(row.media, before | (vendorMatching ? kImageModeVendorColorMatching : 0U));
                const bool slowBefore = !row.slowDryingOn;
                box("slowDryButton").setOn(slowBefore);
                box("biDirButton").setOn(!row.biDirOn);
                panel->checkUIStateWithMediaType(true);
                EXPECT_EQ(flags(kBitsOfMedia), bitsOf(row, vendorMatching));
                EXPECT_EQ(box("slowDryButton").isOn(), vendorMatching ? row.slowDryingOn : slowBefore);
                EXPECT_EQ(box("biDirButton").isOn(), row.biDirOn);
                EXPECT_EQ(keywordsOf(popup("resolutionPopup")), row.qualities);
                EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), row.defaultQuality);
                EXPECT_THAT(disabledKeywordsOf(popup("resolutionPopup")), IsEmpty());
                EXPECT_THAT(host->takeLog(), ElementsAre(row.diffusion ? kPostedDiffusion : kPostedDither));
            }
        }
}

TEST_F(MediaControls, WithoutAResetOnlyTheBitsAndTheQualitiesFollow) {
    for (const MediaRow& row : mediaRows())
        for (const bool vendorMatching : {true, false})
            for (const bool on : {true, false}) {
                SCOPED_TRACE(row.media + (vendorMatching ? " with" : " without") + " the driver's colour matching");
                showWith(row.media, (on ? kBitsOfMedia : 0U) | (vendorMatching ? kImageModeVendorColorMatching : 0U));
                box("slowDryButton").setOn(on);
                box("biDirButton").setOn(on);
                panel->checkUIStateWithMediaType(false);
                EXPECT_EQ(flags(kBitsOfMedia), bitsOf(row, vendorMatching));
                EXPECT_EQ(box("slowDryButton").isOn(), on);
                EXPECT_EQ(box("biDirButton").isOn(), on);
                EXPECT_EQ(keywordsOf(popup("resolutionPopup")), row.qualities);
                EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), row.qualities.front());
                EXPECT_THAT(host->takeLog(), IsEmpty());
            }
}

TEST_F(MediaControls, BorderlessPaperGreysQualities) {
    struct Row {
        std::string media;
        Keywords greyed, greyedOnA3;
        std::string shown, shownOnA3; ///< without a reset
    };
    const std::vector<Row> rows = {
        {"Plain", {"PlainFast"}, {"PlainFast", "PlainNormal", "High"}, "PlainNormal", "Best"},
        {"PlainDuplex", {"PlainFast"}, {"PlainFast", "PlainNormal", "High"}, "PlainNormal", "Best"},
        {"HagakiAtena", {"PlainFast"}, {"PlainFast", "PlainNormal", "High"}, "PlainNormal", "Best"},
        {"HagakiUra", {}, {}, "Fast", "Fast"},
        {"Inkjet", {}, {}, "Normal", "Normal"},
        {"CorvaneQT20Matte", {}, {}, "Normal", "Normal"},
        {"CorvaneGlossy", {}, {}, "Fast", "Fast"},
        {"CorvaneGlossyR", {}, {}, "Fast", "Fast"},
        {"Glossy", {}, {}, "Fast", "Fast"},
        {"Transparencies", {}, {}, "Normal", "Normal"},
    };
    for (const Row& row : rows)
        for (const bool a3 : {false, true}) {
            SCOPED_TRACE(row.media + (a3 ? " on A3" : " on A4"));
            showWith(row.media, kImageModeBorderless);
            panel->paperName = a3 ? "A3.Fullbleed" : "A4.Fullbleed";
            panel->checkUIStateWithMediaType(false);
            EXPECT_EQ(disabledKeywordsOf(popup("resolutionPopup")), a3 ? row.greyedOnA3 : row.greyed);
            EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), a3 ? row.shownOnA3 : row.shown);
        }
}

TEST_F(MediaControls, TheBitNotTheNameDecidesWhetherPaperIsBorderless) {
    showWith("Plain", 0);
    panel->paperName = "A3.Fullbleed";
    panel->checkUIStateWithMediaType(true);
    EXPECT_THAT(disabledKeywordsOf(popup("resolutionPopup")), IsEmpty());
    EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), "Best");
}

TEST_F(MediaControls, TwoSidedPrintingOffersNoHighQuality) {
    showWith("Plain", kImageModeDuplex);
    panel->checkUIStateWithMediaType(true);
    EXPECT_EQ(keywordsOf(popup("resolutionPopup")), kTwoSidedQualities);
}

TEST_F(MediaControls, NoSelectedMediumCountsAsAnUnknownOne) {
    showWith("Plain", kImageModeVendorColorMatching);
    popup("mediaTypePopup").selectItemAtIndex(-1);
    box("slowDryButton").setOn(true);
    box("biDirButton").setOn(true);
    panel->checkUIStateWithMediaType(true);
    EXPECT_EQ(flags(kBitsOfMedia), kImageModeSlowDryingDisabled | kImageModeDiffusion);
    EXPECT_FALSE(box("slowDryButton").isOn());
    EXPECT_FALSE(box("biDirButton").isOn());
    EXPECT_EQ(keywordsOf(popup("resolutionPopup")), kPlainQualities);
    EXPECT_THAT(host->takeLog(),
                ElementsAre("ask CVMediaType=Plain", "ask CVResolution=PlainNormal", kPostedDiffusion));
}

TEST_F(MediaControls, ANewHalfToneIsToldWithItsKind) {
    showWith("Glossy", 0);
    std::vector<toolkit::Notification> heard;
    const auto observer = std::make_shared<const bool>();
    toolkit::NotificationCenter::defaultCenter().addObserver(
        observer, "CVInkPrintSettingNotification", host.get(),
        [&](const toolkit::Notification& notification) { heard.push_back(notification); });
    panel->checkUIStateWithMediaType(true);
    panel->checkUIStateWithMediaType(true); // unchanged: told again
    toolkit::NotificationCenter::defaultCenter().removeObserver(observer.get());
    ASSERT_EQ(heard.size(), 2);
    EXPECT_EQ(heard.back().userInfo,
              (toolkit::ValueMap{{"CVHalfTonePattern", true}, {"FromSetting", "CVHalfTonePattern"}}));
}

// Borderless Letter, and names of states

TEST_F(MediaQuality, BorderlessLetterOnItsModelTakesThePlainDefault) {
    struct Row {
        std::optional<std::string> paper;
        int model;
        bool asked;
    };
    const std::vector<Row> rows = {
        {"Letter.Fullbleed", 12, true},  {"CvLetter_B", 12, true},        {"Letter.Fullbleed.X", 12, true},
        {"Letter.Fullbleed", 11, false}, {"Letter.Fullbleed", 13, false}, {"Letter", 12, false},
        {"A4.Fullbleed", 12, false},     {std::nullopt, 12, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.paper.value_or("null") + " on model " + std::to_string(row.model));
        openHost(replaced(tests::samplePpd("corvane-a3"), "*cupsModelNumber: 12",
                          "*cupsModelNumber: " + std::to_string(row.model)));
        makePanel();
        panel->paperName = row.paper;
        panel->changeResolutionLetterB();
        EXPECT_EQ(takeAsked(), row.asked ? Keywords{"ask CVResolution=PlainNormal"} : Keywords());
    }
}

TEST_F(MediaQuality, AnEnabledBoxThatIsOnIsNamedOn) {
    makePanel();
    toolkit::CheckBox box("box");
    for (const bool enabled : {true, false})
        for (const bool on : {true, false}) {
            SCOPED_TRACE(testing::Message() << enabled << on);
            box.setEnabled(enabled);
            box.setOn(on);
            EXPECT_EQ(panel->addOnOffSuffixToString(&box, "bidir"), enabled && on ? "bidir_on" : "bidir_off");
        }
    EXPECT_EQ(panel->addOnOffSuffixToString(&box, ""), "_off");
}

} // namespace
} // namespace print_settings_tests
