#include "tests/host/command_line/printing.h"
#include "tests/support/fake_print_server.h"

#include <nlohmann/json.hpp>
#include <unistd.h>

namespace host {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kPhoto = "CVMediaType=Glossy CVResolution=Best CVColorEnhancement=ON CVBrightness=12";
constexpr const char* kBrightness = "com.corvane.print.PrintSettings.CEV_Brightness";

/// Presets of a home of the test's own, or, where root runs the tests, of a system's folder of its own.
class PresetCommands : public Printing {
protected:
    PresetCommands() { environment_["CUPS_SERVERROOT"] = folder_.path(); }

    test_support::ProgramResult change(std::vector<std::string> arguments) const {
        if (::geteuid() == 0)
            arguments.emplace_back("--system");
        return run(std::move(arguments));
    }
    void savePhoto() const {
        const auto result = change({"-d", "Sample", "-n", "2", "-o", kPhoto, "--save-preset", "photo"});
        EXPECT_EQ(result.output, "preset is Sample/photo\n") << result.errors;
    }
    /// The lines of a dry run, whose errors must be the given ones.
    std::vector<std::string> dryRun(std::vector<std::string> arguments,
                                    const testing::Matcher<std::vector<std::string>>& errors) const {
        arguments.insert(arguments.end(), {"--dry-run", "--no-alerts"});
        const auto result = run(std::move(arguments));
        EXPECT_EQ(result.status, kExitDone);
        EXPECT_THAT(linesOf(result.errors), errors);
        return linesOf(result.output);
    }
};

TEST_F(PresetCommands, LpPrintsWithAPreset) {
    savePhoto();
    const auto result = test_support::runProgram(
        {.program = "/usr/bin/lp", .arguments = {"lp", "-d", "Sample/photo", page()}, .environment = environment_});
    const auto record = server().waitForRecord(jobOf(result.output));
    ASSERT_TRUE(record) << result.errors;
    EXPECT_EQ(record->copies, "2");
    EXPECT_EQ(record->options.at("CVMediaType"), "Glossy");
    EXPECT_EQ(record->options.at("CVResolution"), "Best");
    EXPECT_EQ(record->options.at(kBrightness), "12");
}

TEST_F(PresetCommands, APresetsChoicesAreTheVeryOnesThatWereSaved) {
    savePhoto();
    EXPECT_EQ(dryRun({"-d", "Sample", "--preset", "photo"}, testing::IsEmpty()),
              dryRun({"-d", "Sample", "-n", "2", "-o", kPhoto}, testing::IsEmpty()));
}

TEST_F(PresetCommands, AsAnInstanceAPresetIsTheStart) {
    savePhoto();
    EXPECT_THAT(
        dryRun({"-d", "Sample/photo"}, testing::IsEmpty()),
        AllOf(Contains("CVResolution=Best"), Contains(std::string(kBrightness) + "=12"), Contains("copies: 2")));
}

TEST_F(PresetCommands, AGivenChoiceGoesBeforeThePresetsAndTheRulesApply) {
    EXPECT_EQ(change({"-d", "Sample", "-o", "CVMediaType=Glossy", "--save-preset", "glossy"}).status, kExitDone);
    const auto options = dryRun({"-d", "Sample", "--preset", "glossy", "-o", "CVMediaType=Plain"},
                                ElementsAre(HasSubstr("CVResolution=Photo was refused")));
    EXPECT_THAT(options, AllOf(Contains("CVMediaType=Plain"), Contains("CVResolution=PlainNormal")));
}

TEST_F(PresetCommands, TheDialogIsGivenThePresetByItsName) {
    savePhoto();
    const std::filesystem::path program = installProgram();
    std::filesystem::copy(WINDOW_MODULE, windowModule());
    environment_["DISPLAY"] = ":99";
    const auto result = test_support::runProgram(
        {.program = program,
         .arguments = {"corvane-print", "-d", "Sample", "--preset", "photo", "-o", "CVBiDir=OFF", page()},
         .environment = environment_});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_THAT(linesOf(result.output),
                AllOf(Contains("preset: photo"), Contains("preset's: CVMediaType=Glossy"),
                      Contains("preset's: copies=2"), Contains("choice: CVBiDir=OFF"), Contains("copies: 0")));
    EXPECT_THAT(result.output, testing::Not(HasSubstr("choice: CVMediaType")));
}

TEST_F(PresetCommands, TheDialogLooksForThePresetOfAServerThatWantsAPassword) {
    const test_support::FakePrintServer guarded({}, "ann:right word");
    const std::filesystem::path program = installProgram();
    std::filesystem::copy(WINDOW_MODULE, windowModule());
    environment_["DISPLAY"] = ":99";
    const auto open = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"corvane-print", "-h", guarded.hostAndPort(), "--preset", "photo"});
        return test_support::runProgram(
            {.program = program, .arguments = std::move(arguments), .environment = environment_});
    };
    const auto result = open({page()});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_THAT(linesOf(result.output), AllOf(Contains("preset: photo"), Contains("preset's: (to be looked for)")));
    // With a PPD of its own the dialog waits for no queue.
    const auto withPpd = open({"--ppd", kSamplePpd, page()});
    EXPECT_EQ(withPpd.status, kExitNotPrinted);
    EXPECT_THAT(linesOf(withPpd.errors), ElementsAre(HasSubstr("wants a user's name and password")));
}

TEST_F(PresetCommands, TheyAreListedRenamedAndDeleted) {
    savePhoto();
    EXPECT_EQ(run({"--presets"}).output, "Sample/photo\n");
    EXPECT_EQ(run({"--presets", "-d", "Foreign"}).output, "");
    EXPECT_EQ(change({"-d", "Sample", "--rename-preset", "photo=album"}).status, kExitDone);
    const auto presets = nlohmann::json::parse(run({"--presets", "--json"}).output);
    ASSERT_EQ(presets.size(), 1U);
    EXPECT_EQ(presets[0].at("queue"), "Sample");
    EXPECT_EQ(presets[0].at("name"), "album");
    EXPECT_EQ(presets[0].at("options").at("CVMediaType"), "Glossy");
    EXPECT_EQ(change({"-d", "Sample", "--delete-preset", "album"}).status, kExitDone);
    EXPECT_EQ(run({"--presets"}).output, "");
}

TEST_F(PresetCommands, WhatIsNotThereIsALineAndAStatus) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--preset", "nothing", "--dry-run"}, {"--preset", "nothing", page()}}) {
        std::vector<std::string> ofQueue = arguments;
        ofQueue.insert(ofQueue.begin(), {"-d", "Sample"});
        const auto result = run(ofQueue);
        EXPECT_EQ(result.status, kExitNotPrinted);
        EXPECT_THAT(linesOf(result.errors), ElementsAre(HasSubstr("no preset \"nothing\"")));
    }
    EXPECT_THAT(change({"-d", "Sample", "--delete-preset", "nothing"}).errors, HasSubstr("no preset \"nothing\""));
    EXPECT_THAT(run({"--presets", "-d", "Nobody"}).errors, HasSubstr("no queue \"Nobody\""));
}

TEST_F(PresetCommands, OnAnotherMakersPrinterTheyHoldWhatWasChosen) {
    EXPECT_EQ(change({"-d", "Foreign", "-o", "PageSize=A5", "--save-preset", "small"}).status, kExitDone);
    EXPECT_EQ(printed({"-d", "Foreign/small", page()}).options.at("PageSize"), "A5");
    EXPECT_EQ(printed({"-d", "Foreign", "--preset", "small", page()}).options.at("PageSize"), "A5");
}

} // namespace
} // namespace host
