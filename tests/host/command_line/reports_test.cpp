#include "host/command_line/command_line.h"
#include "tests/host/command_line/print_command.h"

#include <nlohmann/json.hpp>

namespace host {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

using Reports = PrintCommandTest;

TEST_F(Reports, DryRunShowsWhatWouldBeSent) {
    const auto lines = planned({"-t", "A title", "-n", "3", "-o", "CVMediaType=Glossy", "-P", "1-2", "page.pdf"});
    EXPECT_THAT(lines, AllOf(Contains("title: A title"), Contains("copies: 3"), Contains("CVMediaType=Glossy"),
                             Contains("CVResolution=Photo"), Contains("page-ranges=1-2")));
}

TEST_F(Reports, DryRunIsJsonWhereThatIsAsked) {
    const auto result =
        run({"--dry-run", "--json", "--ppd", kSamplePpd, "-o", "sides=two-sided-long-edge", "page.pdf"});
    EXPECT_EQ(result.status, 0);
    const auto json = nlohmann::json::parse(result.output);
    EXPECT_EQ(json.at("title"), "page.pdf");
    EXPECT_EQ(json.at("copies"), 1);
    EXPECT_EQ(json.at("options").at("Duplex"), "DuplexNoTumble");
    EXPECT_EQ(json.at("options").at("CVMediaType"), "PlainDuplex");
}

TEST_F(Reports, CheckIsSilentWhereNothingIsWrong) {
    const auto result = run({"--check", "--ppd", kSamplePpd, "-o", "CVMediaType=Glossy", "-o", "fit-to-page"});
    EXPECT_EQ(result.status, kExitDone);
    EXPECT_EQ(result.output + result.errors, "");
}

TEST_F(Reports, CheckTellsOneLineForEachFault) {
    const auto result = run(
        {"--check", "--ppd", kSamplePpd, "-o", "CVMediaType=Glossy CVInputSlot=Tray2 CVNothing=x CVMonoColor=Green"});
    EXPECT_EQ(result.status, kExitCheckFailed);
    EXPECT_THAT(linesOf(result.errors),
                testing::UnorderedElementsAre(HasSubstr("CVInputSlot=Tray2"), HasSubstr("\"CVNothing\""),
                                              HasSubstr("\"Green\"")));
}

// A paper is chosen without a question, so it may stand beside a default that excludes it.
TEST_F(Reports, CheckTellsAPaperThatTheDefaultsExcludeOnce) {
    std::string text = test_support::contentsOf(kSamplePpd);
    text.insert(text.find("*UIConstraints:"), "*UIConstraints: *PageSize A5 *CVInputSlot Tray1\n"
                                              "*UIConstraints: *CVInputSlot Tray1 *PageSize A5\n"
                                              "*UIConstraints: *CVInputSlot Tray1 *CVJpeg OFF\n");
    const std::string ppd = folder_.write("excluding.ppd", text);
    const auto result = run({"--check", "--no-alerts", "--ppd", ppd, "-o", "PageSize=A5"});
    EXPECT_EQ(result.status, kExitCheckFailed);
    EXPECT_THAT(linesOf(result.errors), ElementsAre(HasSubstr("\"Paper Source: Tray 1\" cannot be used together with "
                                                              "\"Paper Size: A5\".")));
    EXPECT_EQ(run({"--check", "--no-alerts", "--ppd", ppd, "-o", "PageSize=A4"}).errors,
              ""); // defaults: nobody's choice
}

TEST_F(Reports, ExplainNamesWhatTheRulesChangedAndRefused) {
    const auto result = run({"--explain", "--ppd", kSamplePpd, "-o", "CVMediaType=Glossy", "-o", "CVInputSlot=Tray2"});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_THAT(linesOf(result.output),
                AllOf(Contains("CVMediaType=Glossy"), Contains("    CVResolution: PlainNormal -> Photo"),
                      Contains(StartsWith("CVInputSlot=Tray2: refused: "))));
}

TEST_F(Reports, SummaryIsThatOfThePanels) {
    const auto result = run({"--summary", "--ppd", kSamplePpd, "-o", "CVMediaType=Glossy"});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_THAT(linesOf(result.output),
                AllOf(Contains("    Media Type: Other Glossy Paper"), Contains("    Print Quality: Photo")));
}

TEST_F(Reports, OfAPrinterWithoutPanelsSaySo) {
    const std::string ppd = CV_SOURCE_DIR "/tests/support/recording.ppd";
    EXPECT_THAT(run({"--summary", "--ppd", ppd}).output, HasSubstr("none of the panels' options"));
    EXPECT_THAT(run({"--explain", "--ppd", ppd}).output, HasSubstr("none of the panels' options"));
}

TEST_F(Reports, NeedNoDocumentAndSendNothing) {
    const auto result = run({"--dry-run", "--ppd", kSamplePpd, "--to", folder_.path() / "out"});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "out"));
}

TEST_F(Reports, OfAJobThatAnAlertStopsSaySo) {
    const auto result = run({"--dry-run", "--stop-on-alert", "--ppd", kSamplePpd, "-o", "media=A4"});
    EXPECT_EQ(result.status, kExitStoppedByAlert);
    EXPECT_THAT(linesOf(result.errors), Contains(HasSubstr("would not be printed")));
}

TEST_F(Reports, ChangeNoPreference) {
    EXPECT_EQ(run({"--dry-run", "--ppd", kSamplePpd, "-o", "media=A4"}).status, kExitDone);
    EXPECT_THAT(test_support::namesIn(folder_.path()), IsEmpty());
}

TEST_F(Reports, HelpAndVersionAreShown) {
    EXPECT_THAT(run({"--help"}).output, StartsWith("Usage: lp"));
    EXPECT_THAT(linesOf(run({"--version"}, "", "corvane-print").output), ElementsAre(StartsWith("corvane-print ")));
}

TEST_F(Reports, OfAWrongUsageAreOneLine) {
    const auto result = run({"--nonsense"});
    EXPECT_EQ(result.status, kExitUsage);
    EXPECT_THAT(linesOf(result.errors), ElementsAre(AllOf(StartsWith("lp: "), HasSubstr("--nonsense"))));
}

TEST_F(Reports, OfAMissingPpdOrBundleNameIt) {
    const auto noPpd = run({"--check", "--ppd", "/no/such.ppd"});
    EXPECT_EQ(noPpd.status, kExitNotPrinted);
    EXPECT_THAT(noPpd.errors, HasSubstr("/no/such.ppd"));
    const auto noBundle = run({"--check", "--ppd", kSamplePpd, "--bundle", "/no/such.plugin"});
    EXPECT_EQ(noBundle.status, kExitNotPrinted);
    EXPECT_THAT(noBundle.errors, HasSubstr("/no/such.plugin"));
}

} // namespace
} // namespace host
