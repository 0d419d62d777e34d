#include "tests/host/session/fake_dialog.h"

#include <map>

namespace host {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Key;
using testing::Not;
using testing::Pair;

using Options = std::map<std::string, std::string>;

class SessionJobOptions : public FakeDialog {
protected:
    Options jobOptions() const {
        Options map;
        for (const JobOption& option : session->jobOptions())
            EXPECT_TRUE(map.emplace(option.name, option.value).second) << option.name << " is there twice";
        return map;
    }
};

TEST_F(SessionJobOptions, EveryManagedMarkAndThePaperGoAlong) {
    open();
    EXPECT_EQ(jobOptions(), (Options{{"InkMedia", "Plain"}, {"Slow", "OFF"}, {"Tray", "Upper"}, {"PageSize", "A4"}}));
}

TEST_F(SessionJobOptions, OtherMarksGoAlongWhereTheyDifferFromThePpdsDefault) {
    options.description->mark("Staple", "One");
    options.description->mark("Duplex", "DuplexNoTumble");
    options.description->mark("Unset", "B");
    open();
    EXPECT_EQ(jobOptions(), (Options{{"InkMedia", "Plain"},
                                     {"Slow", "OFF"},
                                     {"Tray", "Upper"},
                                     {"PageSize", "A4"},
                                     {"Staple", "One"},
                                     {"Duplex", "DuplexNoTumble"},
                                     {"Unset", "B"}}));
}

TEST_F(SessionJobOptions, OptionsWithNothingMarkedStayAway) {
    options.description->unmark("InkMedia");
    open();
    EXPECT_THAT(jobOptions(), Not(Contains(Key("InkMedia"))));
    EXPECT_THAT(jobOptions(), Not(Contains(Key("Unset"))));
}

TEST_F(SessionJobOptions, OptionsAreOrderedByName) {
    open();
    std::vector<std::string> names;
    for (const JobOption& option : session->jobOptions())
        names.push_back(option.name);
    EXPECT_THAT(names, testing::ElementsAre("InkMedia", "PageSize", "Slow", "Tray"));
}

TEST_F(SessionJobOptions, ThePaperGoesOnceAsThePageSize) {
    open();
    session->setPaper(session->paperForPageSize("A5"), true);
    EXPECT_THAT(jobOptions(), Contains(Pair("PageSize", "A5")));
    EXPECT_THAT(jobOptions(), Not(Contains(Key("PageRegion"))));
    description->mark("PageRegion", "A5");
    EXPECT_THAT(jobOptions(), Not(Contains(Key("PageRegion"))));
}

TEST_F(SessionJobOptions, AUserDefinedPaperIsASizeInPoints) {
    open();
    for (const auto& [width, height, text] :
         {std::tuple{200.0, 300.0, "Custom.200x300"}, std::tuple{359.6, 700.0, "Custom.359.6x700"},
          std::tuple{612.0, 792.25, "Custom.612x792.25"}}) {
        session->setPaper(printing::Paper{.name = "Custom", .ppdName = {}, .width = width, .height = height}, true);
        EXPECT_THAT(jobOptions(), Contains(Pair("PageSize", text)));
    }
}

TEST_F(SessionJobOptions, AUserDefinedPaperWithoutAReadableSizeLeavesTheMarkedOne) {
    open();
    session->setPaper(printing::Paper{.name = "Custom", .ppdName = {}, .width = {}, .height = 300}, true);
    EXPECT_THAT(jobOptions(), Contains(Pair("PageSize", "A4")));
    session->setPaper(std::nullopt, true);
    EXPECT_THAT(jobOptions(), Contains(Pair("PageSize", "A4")));
}

TEST_F(SessionJobOptions, AScaledJobCarriesThePaperThatItIsMappedToAndFitScaling) {
    options.settings->setValueForKey(std::string("A5"), printing::kPageToPaperMappingKey);
    open();
    EXPECT_THAT(jobOptions(), IsSupersetOf({Pair(std::string("PageSize"), std::string("A5")),
                                            Pair(std::string("print-scaling"), std::string("fit")),
                                            Pair(std::string(printing::kPageToPaperMappingKey), std::string("A5"))}));
    session->settings()->removeKey(printing::kPageToPaperMappingKey);
    EXPECT_THAT(jobOptions(), Contains(Pair("PageSize", "A4")));
    EXPECT_THAT(jobOptions(), Not(Contains(Key("print-scaling"))));
}

TEST_F(SessionJobOptions, PrintSettingsGoAlongAsTexts) {
    options.settings->setValueForKey(std::string("a text, \"quoted\""), "Text");
    options.settings->setValueForKey(true, "Yes");
    options.settings->setValueForKey(false, "No");
    options.settings->setValueForKey(std::int64_t{-20}, "Whole");
    options.settings->setValueForKey(0.5, "Half");
    open();
    EXPECT_THAT(
        jobOptions(),
        IsSupersetOf({Pair(std::string("Text"), std::string("a text, \"quoted\"")),
                      Pair(std::string("Yes"), std::string("true")), Pair(std::string("No"), std::string("false")),
                      Pair(std::string("Whole"), std::string("-20")), Pair(std::string("Half"), std::string("0.5"))}));
}

TEST_F(SessionJobOptions, AMarkStandsBeforeAPrintSettingOfTheSameName) {
    options.settings->setValueForKey(std::string("Glossy"), "InkMedia");
    open();
    EXPECT_THAT(jobOptions(), Contains(Pair("InkMedia", "Plain")));
}

TEST_F(SessionJobOptions, WithoutPrintSettingsOnlyMarksGoAlong) {
    options.settings.reset();
    open();
    EXPECT_EQ(session->printSettings(), nullptr);
    EXPECT_EQ(jobOptions().size(), 4U);
}

} // namespace
} // namespace host
