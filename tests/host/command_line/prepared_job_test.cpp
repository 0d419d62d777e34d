#include "host/command_line/prepared_job.h"

#include "tests/support/scratch_folder.h"
#include "toolkit/user_defaults.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>

namespace host {
namespace {

using test_support::contentsOf;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kModel = CV_SOURCE_DIR "/resources/models/corvane-a3.ppd";
const std::string kForeignModel = CV_SOURCE_DIR "/tests/support/recording.ppd";

class PreparedJobs : public testing::Test {
protected:
    /// Prepares a job for a sample printer.
    PreparedJob& prepare(std::vector<JobOption> given, std::vector<JobOption> kept = {},
                         const std::string& ppd = kModel) {
        return prepareWithText(contentsOf(ppd), std::move(given), std::move(kept));
    }
    PreparedJob& prepareWithText(std::string ppd, std::vector<JobOption> given, std::vector<JobOption> kept = {}) {
        std::string error;
        job_ = PreparedJob::prepare({.ppdText = std::move(ppd),
                                     .ppdName = "The sample",
                                     .kept = std::move(kept),
                                     .given = std::move(given),
                                     .bundle = CV_BINARY_DIR "/PlugIns/CVInkQuality12.plugin",
                                     .languages = {"en"},
                                     .alerts = &alerts_,
                                     .defaults = &defaults_},
                                    error);
        if (job_ == nullptr)
            throw std::runtime_error(error);
        return *job_;
    }
    /// What would be sent for the option; nullopt: nothing.
    static std::optional<std::string> sent(const PreparedJob& job, const std::string& name) {
        const std::vector<JobOption> options = job.options();
        const auto found = std::ranges::find(options, name, &JobOption::name);
        return found == options.end() ? std::nullopt : std::optional(found->value);
    }

    std::ostringstream told_;
    TerminalAlerts alerts_{&told_, "lp", TerminalAlerts::Answer::GoOn};
    toolkit::MemoryUserDefaults defaults_;

private:
    std::unique_ptr<PreparedJob> job_;
};

TEST_F(PreparedJobs, AChoiceBringsWhatTheRulesSay) {
    const PreparedJob& job = prepare({{"CVMediaType", "Glossy"}});
    EXPECT_EQ(sent(job, "CVMediaType"), "Glossy");
    EXPECT_EQ(sent(job, "CVResolution"), "Photo");
    EXPECT_EQ(sent(job, "CVBiDir"), "OFF");
    EXPECT_THAT(job.problems(), IsEmpty());
}

TEST_F(PreparedJobs, ChoicesAreMadeInTheOrderOfThePanelsKeys) {
    // The medium comes before its quality, however they are given.
    for (const bool mediumFirst : {true, false}) {
        std::vector<JobOption> given = {{"CVMediaType", "Glossy"}, {"CVResolution", "Best"}};
        if (!mediumFirst)
            std::ranges::reverse(given);
        const PreparedJob& job = prepare(given);
        EXPECT_EQ(sent(job, "CVMediaType"), "Glossy");
        EXPECT_EQ(sent(job, "CVResolution"), "Best");
    }
}

TEST_F(PreparedJobs, OfEqualNamesTheLastHolds) {
    const PreparedJob& job = prepare({{"CVMediaType", "Glossy"}, {"CVMediaType", "Inkjet"}});
    EXPECT_EQ(sent(job, "CVMediaType"), "Inkjet");
    const auto isOfGlossy = [](const JobStep& step) { return step.what == "CVMediaType=Glossy"; };
    EXPECT_TRUE(std::ranges::none_of(job.steps(), isOfGlossy));
}

TEST_F(PreparedJobs, ARefusalIsToldInThePpdsWords) {
    const PreparedJob& job = prepare({{"CVInputSlot", "Tray2"}, {"CVMediaType", "Glossy"}});
    EXPECT_EQ(sent(job, "CVInputSlot"), "Tray1");
    EXPECT_THAT(job.problems(),
                ElementsAre(AllOf(HasSubstr("CVInputSlot=Tray2"), HasSubstr("Media Type: Other Glossy Paper"))));
}

TEST_F(PreparedJobs, AChoiceThatIsNotOfferedIsRefused) {
    const PreparedJob& job = prepare({{"CVMediaType", "Glossy"}, {"CVResolution", "PlainFast"}});
    EXPECT_EQ(sent(job, "CVResolution"), "Photo");
    EXPECT_THAT(job.problems(), ElementsAre(HasSubstr("CVResolution=PlainFast")));
}

TEST_F(PreparedJobs, WhatTheRulesChangedIsExplained) {
    const PreparedJob& job = prepare({{"CVMediaType", "Glossy"}});
    const auto step = std::ranges::find(job.steps(), "CVMediaType=Glossy", &JobStep::what);
    ASSERT_NE(step, job.steps().end());
    EXPECT_THAT(step->changes, Contains("CVResolution: PlainNormal -> Photo"));
    EXPECT_THAT(step->changes, Not(Contains(HasSubstr("CVMediaType"))));
}

TEST_F(PreparedJobs, KeptOptionsAreTheStart) {
    const std::vector<JobOption> kept = {{"CVMediaType", "Glossy"}, {"CVResolution", "Best"}, {"media", "A3"}};
    const PreparedJob& job = prepare({}, kept);
    EXPECT_EQ(sent(job, "CVMediaType"), "Glossy");
    EXPECT_EQ(sent(job, "CVResolution"), "Best");
    EXPECT_EQ(sent(job, "PageSize"), "A3");
    const PreparedJob& other = prepare({{"CVMediaType", "Plain"}}, kept);
    EXPECT_EQ(sent(other, "CVMediaType"), "Plain");
}

TEST_F(PreparedJobs, PaperAndTwoSidedPrintingAreSentOnceInOneForm) {
    const PreparedJob& job =
        prepare({{"media", "iso_a5_148x210mm"}, {"sides", "two-sided-long-edge"}}, {{"PageSize", "A3"}});
    EXPECT_EQ(sent(job, "PageSize"), "A5");
    EXPECT_EQ(sent(job, "Duplex"), "DuplexNoTumble");
    for (const char* name : {"media", "sides", "PageRegion"})
        EXPECT_EQ(sent(job, name), std::nullopt) << name;
}

TEST_F(PreparedJobs, TwoSidedPrintingTakesThePlainPaperForIt) {
    const PreparedJob& job = prepare({{"sides", "two-sided-short-edge"}, {"CVMediaType", "Plain"}});
    EXPECT_EQ(sent(job, "CVMediaType"), "PlainDuplex");
    EXPECT_THAT(job.problems(), IsEmpty());
}

TEST_F(PreparedJobs, AnEnvelopeBringsItsThickness) {
    EXPECT_EQ(sent(prepare({{"media", "EnvDL"}}), "CVColorPaperThick"), "Env");
}

TEST_F(PreparedJobs, FreeSizesAreSentInPoints) {
    EXPECT_EQ(sent(prepare({{"media", "Custom.400x600"}}), "PageSize"), "Custom.400x600");
    EXPECT_EQ(sent(prepare({{"PageSize", "Custom.5x8in"}}), "PageSize"), "Custom.360x576");
}

TEST_F(PreparedJobs, AdjustmentsGoToThePrintSettings) {
    const std::string setting = "com.corvane.print.PrintSettings.CEV_Brightness";
    const PreparedJob& job = prepare({{"CVBrightness", "12"}, {"CVColorEnhancement", "ON"}});
    EXPECT_EQ(sent(job, setting), "12");
    EXPECT_THAT(job.problems(), IsEmpty());
    const PreparedJob& disabled = prepare({{"CVBrightness", "12"}});
    EXPECT_EQ(sent(disabled, setting), "0");
    EXPECT_THAT(disabled.problems(), ElementsAre(HasSubstr("CVBrightness=12")));
}

TEST_F(PreparedJobs, PrintSettingsMayBeGivenAsTheyAre) {
    const PreparedJob& job = prepare({{"com.corvane.print.PrintSettings.CEV_Red", "-7"}});
    EXPECT_EQ(sent(job, "com.corvane.print.PrintSettings.CEV_Red"), "-7");
}

TEST_F(PreparedJobs, OnlyWhatIsNoChoiceIsSentAsItStands) {
    const PreparedJob& job = prepare({{"page-ranges", "1-3"}, {"CVNothing", "x"}, {"CVMediaType", "Marble"}});
    EXPECT_EQ(sent(job, "page-ranges"), "1-3");
    EXPECT_EQ(sent(job, "CVNothing"), "x");
    EXPECT_EQ(sent(job, "CVMediaType"), "Plain");
    EXPECT_THAT(job.unknownOptions(), ElementsAre(HasSubstr("CVNothing")));
    EXPECT_THAT(job.problems(), ElementsAre(HasSubstr("Marble")));
}

TEST_F(PreparedJobs, WhatIsInstalledIsNoJobsOption) {
    const std::string ppd = contentsOf(kModel) + "*OpenGroup: InstallableOptions/Installed\n"
                                                 "*OpenUI *OptionTray/Second Tray: Boolean\n"
                                                 "*DefaultOptionTray: True\n"
                                                 "*OptionTray False/No: \"\"\n"
                                                 "*OptionTray True/Yes: \"\"\n"
                                                 "*CloseUI: *OptionTray\n"
                                                 "*CloseGroup: InstallableOptions\n";
    const PreparedJob& given = prepareWithText(ppd, {{"OptionTray", "False"}});
    EXPECT_EQ(sent(given, "OptionTray"), std::nullopt);
    EXPECT_THAT(given.problems(), ElementsAre(HasSubstr("OptionTray")));
    const PreparedJob& kept = prepareWithText(ppd, {}, {{"OptionTray", "False"}});
    EXPECT_EQ(sent(kept, "OptionTray"), std::nullopt);
    EXPECT_THAT(kept.problems(), IsEmpty());
}

TEST_F(PreparedJobs, AlertsAreToldAndAnsweredBeforePrinting) {
    PreparedJob& job = prepare({{"media", "A4"}});
    EXPECT_EQ(told_.str(), "");
    EXPECT_TRUE(job.shouldPrint());
    EXPECT_THAT(told_.str(), AllOf(HasSubstr("lp: Loading the Paper: Load the paper in the tray sideways"),
                                   testing::EndsWith("\n")));
    EXPECT_TRUE(alerts_.wasShown());
}

TEST_F(PreparedJobs, APaperThatIsSuppressedRaisesNoAlert) {
    defaults_.setPersistentDomainForName({{"Landscape Instruction", false}}, "com.corvane.print.pde.CVInkQuality12");
    EXPECT_TRUE(prepare({{"media", "A4"}}).shouldPrint());
    EXPECT_EQ(told_.str(), "");
}

TEST_F(PreparedJobs, AlertsThatStopAnswerNo) {
    TerminalAlerts stopping(&told_, "lp", TerminalAlerts::Answer::Stop);
    std::string error;
    const auto job = PreparedJob::prepare({.ppdText = contentsOf(kModel),
                                           .ppdName = "The sample",
                                           .kept = {},
                                           .given = {{"media", "A4"}},
                                           .bundle = CV_BINARY_DIR "/PlugIns/CVInkQuality12.plugin",
                                           .languages = {"en"},
                                           .alerts = &stopping,
                                           .defaults = &defaults_},
                                          error);
    ASSERT_NE(job, nullptr) << error;
    EXPECT_FALSE(job->shouldPrint());
    EXPECT_TRUE(stopping.wasShown());
}

TEST_F(PreparedJobs, APrinterOfAnotherMakeHasNoPanelsAndNoPrivateKeys) {
    PreparedJob& job =
        prepare({{"media", "A5"}, {"page-ranges", "2"}, {"AP_ColorMatchingMode", "x"}}, {}, kForeignModel);
    EXPECT_FALSE(job.hasPanels());
    EXPECT_TRUE(job.shouldPrint());
    EXPECT_EQ(told_.str(), "");
    std::vector<std::string> names;
    for (const JobOption& option : job.options())
        names.push_back(option.name + "=" + option.value);
    EXPECT_THAT(names, ElementsAre("PageSize=A5", "page-ranges=2"));
}

TEST_F(PreparedJobs, AQueueWithoutAPpdGetsItsOptionsAsTheyAre) {
    PreparedJob& job =
        prepareWithText("", {{"media", "A4"}, {"sides", "one-sided"}}, {{"media", "A5"}, {"ppi", "300"}});
    EXPECT_FALSE(job.hasPanels());
    EXPECT_TRUE(job.shouldPrint());
    EXPECT_EQ(sent(job, "media"), "A4");
    EXPECT_EQ(sent(job, "sides"), "one-sided");
    EXPECT_EQ(sent(job, "ppi"), "300");
}

TEST_F(PreparedJobs, APpdThatIsNoneIsRefused) {
    EXPECT_THROW(prepareWithText("junk", {}), std::runtime_error);
}

} // namespace
} // namespace host
