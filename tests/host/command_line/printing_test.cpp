#include "host/command_line/command_line.h"
#include "tests/host/command_line/printing.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace host {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

TEST_F(Printing, AFileIsPrintedAsLpDoes) {
    const auto result = run({"-d", "Sample", page()});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_THAT(result.output, MatchesRegex("request id is Sample-[0-9]+ \\(1 file\\(s\\)\\)\n"));
    const auto record = server().waitForRecord(jobOf(result.output));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->title, "page.txt");
    EXPECT_EQ(record->data, "a page\n");
}

TEST_F(Printing, StandardInputIsPrintedWithOrWithoutADash) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"-d", "Sample"}, {"-d", "Sample", "-"}}) {
        const auto record = printed(arguments, "from a pipe\n");
        EXPECT_EQ(record.data, "from a pipe\n");
        EXPECT_EQ(record.title, "(stdin)");
    }
}

TEST_F(Printing, APipeIsPrintedAsAFileIs) {
    const std::string pipe = folder_.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(pipe) << "through a pipe\n"; });
    const auto record = printed({"-d", "Sample", pipe});
    writer.join();
    EXPECT_EQ(record.data, "through a pipe\n");
    EXPECT_EQ(record.title, "pipe");
}

TEST_F(Printing, StandardInputMayBeAPipeThatIsNamed) {
    const auto result = test_support::runProgram(
        {.program = PRINT_PROGRAM,
         .arguments = {"lp", "-d", "Sample", "/dev/stdin", page()},
         .environment = environment_,
         .writeInput = [](int descriptor) { EXPECT_EQ(::write(descriptor, "piped\n", 6), 6); }});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("(2 file(s))"));
}

TEST_F(Printing, StandardInputLeavesNoFileHoweverThePrintingEnds) {
    const std::filesystem::path spool = folder_.path() / "spool";
    std::filesystem::create_directory(spool);
    environment_["TMPDIR"] = spool;
    bool isEmptyMeanwhile = false;
    const auto result = test_support::runProgram({.program = PRINT_PROGRAM,
                                                  .arguments = {"lp", "-d", "Sample"},
                                                  .environment = environment_,
                                                  .writeInput = [&](int descriptor) {
                                                      // More than a pipe holds: once it is written, the command has
                                                      // begun to read.
                                                      const std::string bytes(1 << 20, 'x');
                                                      EXPECT_EQ(::write(descriptor, bytes.data(), bytes.size()),
                                                                static_cast<ssize_t>(bytes.size()));
                                                      isEmptyMeanwhile = std::filesystem::is_empty(spool);
                                                  }});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_TRUE(isEmptyMeanwhile);
}

TEST_F(Printing, SheetsAreSentGivenOrKept) {
    keepOptions("Dest Sample job-sheets=classified\n");
    const auto sheetsOf = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--no-alerts", "-H", "hold", page()});
        const auto result = run(arguments);
        EXPECT_THAT(linesOf(result.errors), ElementsAre(HasSubstr("held until it is released")));
        return server().jobAttribute(jobOf(result.output), "job-sheets");
    };
    EXPECT_EQ(sheetsOf({"-d", "Foreign", "-o", "job-sheets=secret,classified"}), "secret,classified");
    EXPECT_EQ(sheetsOf({"-d", "Sample", "-o", "job-sheets=secret"}), "secret");
    EXPECT_EQ(sheetsOf({"-d", "Sample"}), "classified");
    EXPECT_THAT(run({"-d", "Foreign", "-o", "job-sheets=a,b,c", page()}).errors, HasSubstr("one sheet, or two"));
}

TEST_F(Printing, KeptOptionsOfNoUseAreTold) {
    keepOptions("Dest Foreign job-hold-until=banana\n");
    const auto result = run({"-d", "Foreign", page()});
    EXPECT_EQ(result.status, kExitDone);
    EXPECT_THAT(linesOf(result.errors), ElementsAre(HasSubstr("\"banana\"")));
}

TEST_F(Printing, ADryRunTellsTheTitleThatIsSent) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"-d", "Sample"}, {"-d", "Sample", "-"}, {"-d", "Sample", "-", page()}}) {
        std::vector<std::string> dry = arguments;
        dry.emplace_back("--dry-run");
        EXPECT_THAT(run(dry).output, HasSubstr("\ntitle: (stdin)\n"));
    }
    EXPECT_THAT(run({"-d", "Sample", page(), "--dry-run"}).output, HasSubstr("\ntitle: page.txt\n"));
}

TEST_F(Printing, AReportThatCannotBeWrittenIsAFailure) {
    keepOptions("Default Sample\nDest Sample/photo CVMediaType=Glossy\n");
    for (const char* report : {"--dry-run", "--summary", "--explain", "--presets"}) {
        SCOPED_TRACE(report);
        const auto result = test_support::runProgram(
            {.program = "/bin/sh",
             .arguments = {"sh", "-c", "exec \"$@\" >/dev/full", "sh", PRINT_PROGRAM, "--no-dialog", report},
             .environment = environment_});
        EXPECT_EQ(result.status, kExitNotPrinted);
        EXPECT_THAT(result.errors, HasSubstr("Standard output cannot be written"));
    }
}

TEST_F(Printing, WhatCannotBeToldIsAFailureThatSaysWhatIsDone) {
    const std::pair<std::vector<std::string>, const char*> rows[] = {
        {{"--help"}, "Standard output cannot be written"},
        {{"--version"}, "Standard output cannot be written"},
        {{"-d", "Sample", page()}, " was sent. Standard output cannot be written"},
        {{"--ppd", kSamplePpd, "--to", folder_.path() / "out", page()}, "printed to the folder. Standard output"},
    };
    const std::size_t jobs = server().jobStates().size();
    for (const auto& [arguments, sentence] : rows) {
        std::vector<std::string> all = {"sh", "-c", "exec \"$@\" >/dev/full", "sh", PRINT_PROGRAM, "--no-dialog"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const auto result =
            test_support::runProgram({.program = "/bin/sh", .arguments = all, .environment = environment_});
        EXPECT_EQ(result.status, kExitNotPrinted) << sentence;
        EXPECT_THAT(linesOf(result.errors), testing::Contains(HasSubstr(sentence)));
    }
    EXPECT_EQ(server().jobStates().size(), jobs + 1);
}

TEST_F(Printing, EmptyStandardInputIsNoJob) {
    const auto result = run({"-d", "Sample"}, "");
    EXPECT_EQ(result.status, kExitNotPrinted);
    EXPECT_THAT(result.errors, HasSubstr("nothing to print"));
}

TEST_F(Printing, SeveralFilesAreOneJob) {
    const auto result = run({"-d", "Sample", page("one.txt"), page("two.txt")});
    EXPECT_THAT(result.output, MatchesRegex("request id is Sample-[0-9]+ \\(2 file\\(s\\)\\)\n"));
    EXPECT_TRUE(server().waitForRecord(jobOf(result.output)));
}

TEST_F(Printing, ASilentJobTellsNoNumber) {
    const std::size_t before = server().jobStates().size();
    EXPECT_EQ(run({"-s", "-d", "Sample", page()}).output, "");
    EXPECT_EQ(server().jobStates().size(), before + 1);
}

TEST_F(Printing, LettersBecomeAttributesOfTheJob) {
    const auto record = printed({"-d", "Sample", "-n", "4", "-t", "A title", "-P", "1-3,5", "-U", "anna", page()});
    EXPECT_EQ(record.copies, "4");
    EXPECT_EQ(record.title, "A title");
    EXPECT_EQ(record.user, "anna");
    EXPECT_EQ(record.options.at("page-ranges"), "1-3,5");
}

TEST_F(Printing, TheRulesApplyToWhatIsChosen) {
    const auto record = printed({"-d", "Sample", "-o", "CVMediaType=Glossy", "-o", "media=A3", page()});
    EXPECT_EQ(record.options.at("CVMediaType"), "Glossy");
    EXPECT_EQ(record.options.at("CVResolution"), "Photo");
    EXPECT_EQ(record.options.at("PageSize"), "A3");
    EXPECT_FALSE(record.options.contains("media"));
}

TEST_F(Printing, ADryRunShowsTheVerySetThatIsSent) {
    const std::vector<std::string> choices = {"-d", "Sample", "-o", "CVMediaType=Inkjet sides=two-sided-long-edge"};
    std::vector<std::string> dry = choices, wet = choices;
    dry.insert(dry.end(), {"--dry-run", "--json"});
    wet.push_back(page());
    const auto planned = nlohmann::json::parse(run(dry).output).at("options");
    const auto record = printed(wet);
    ASSERT_FALSE(planned.empty());
    for (const auto& [name, value] : planned.items()) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(record.options.contains(name));
        EXPECT_STRCASEEQ(record.options.at(name).c_str(), value.get<std::string>().c_str());
    }
}

TEST_F(Printing, ARefusalIsToldAndTheRestIsPrinted) {
    const auto result = run({"-d", "Sample", "-o", "CVMediaType=Glossy CVInputSlot=Tray2", page()});
    EXPECT_EQ(result.status, kExitDone);
    EXPECT_THAT(result.errors, HasSubstr("CVInputSlot=Tray2 was refused"));
    const auto record = server().waitForRecord(jobOf(result.output));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->options.at("CVInputSlot"), "Tray1");
}

TEST_F(Printing, KeptOptionsAndInstancesAreTheStart) {
    keepOptions("Dest Sample CVMediaType=Inkjet copies=2\nDest Sample/photo CVMediaType=Glossy\n");
    const auto own = printed({"-d", "Sample", page()});
    EXPECT_EQ(own.options.at("CVMediaType"), "Inkjet");
    EXPECT_EQ(own.copies, "2");
    EXPECT_EQ(printed({"-d", "Sample/photo", page()}).options.at("CVMediaType"), "Glossy");
    EXPECT_EQ(printed({"-d", "Sample/photo", "-n", "3", page()}).copies, "3");
}

TEST_F(Printing, TheDefaultIsThatOfTheEnvironmentThenTheUsers) {
    EXPECT_THAT(run({page()}).errors, HasSubstr("no default queue"));
    keepOptions("Default Foreign\n");
    EXPECT_THAT(run({page()}).output, HasSubstr("request id is Foreign-"));
    environment_["PRINTER"] = "Sample";
    EXPECT_THAT(run({page()}).output, HasSubstr("request id is Sample-"));
    environment_["LPDEST"] = "Foreign";
    EXPECT_THAT(run({page()}).output, HasSubstr("request id is Foreign-"));
    environment_["LPDEST"] = "Nobody";
    EXPECT_THAT(run({page()}).errors, AllOf(HasSubstr("LPDEST"), HasSubstr("\"Nobody\"")));
}

TEST_F(Printing, AnotherServerIsNamedByALetter) {
    environment_.erase("CUPS_SERVER");
    EXPECT_EQ(printed({"-h", server().hostAndPort(), "-d", "Sample", page()}).options.at("CVMediaType"), "Plain");
}

TEST_F(Printing, AnotherMakersPrinterGetsNoPrivateKeys) {
    const auto result = run({"-d", "Foreign", "-o", "PageSize=A5", page()});
    EXPECT_EQ(result.status, kExitDone);
    EXPECT_EQ(result.errors, "");
    const auto record = server().waitForRecord(jobOf(result.output));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->options.at("PageSize"), "A5");
    EXPECT_THAT(record->optionText, AllOf(Not(HasSubstr("com.corvane")), Not(HasSubstr("AP_"))));
}

TEST_F(Printing, WithoutAWindowAnAlertIsALineAndTheJobGoesOn) {
    const auto result = run({"--no-dialog", "-d", "Sample", "-o", "media=A4", page()}, "", "corvane-print");
    EXPECT_EQ(result.status, kExitDone);
    EXPECT_THAT(linesOf(result.errors), ElementsAre(HasSubstr("Load the paper in the tray sideways")));
}

TEST_F(Printing, AlertsCanBeSilenced) {
    const auto result = run({"--no-alerts", "-d", "Sample", "-o", "media=A4", page()});
    EXPECT_EQ(result.status, kExitDone);
    EXPECT_EQ(result.errors, "");
}

TEST_F(Printing, AnAlertCanStopTheJob) {
    const std::size_t before = server().jobStates().size();
    const auto result = run({"--stop-on-alert", "-d", "Sample", "-o", "media=A4", page()});
    EXPECT_EQ(result.status, kExitStoppedByAlert);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(linesOf(result.errors), ElementsAre(HasSubstr("Load the paper"), HasSubstr("not printed")));
    EXPECT_EQ(server().jobStates().size(), before);
}

TEST_F(Printing, AFolderTakesTheJobAndItsTicket) {
    const std::filesystem::path out = folder_.path() / "out";
    const auto result = run({"--ppd", kSamplePpd, "--to", out, "-o", "CVMediaType=Glossy", "-n", "2", page()});
    EXPECT_EQ(result.status, kExitDone) << result.errors;
    EXPECT_EQ(result.output, "ticket is " + (out / "ticket.json").string() + "\n");
    const auto ticket = nlohmann::json::parse(test_support::contentsOf(out / "ticket.json"));
    EXPECT_EQ(ticket.at("copies"), 2);
    EXPECT_EQ(ticket.at("options").at("CVResolution"), "Photo");
    EXPECT_EQ(test_support::contentsOf(out / "page.txt"), "a page\n");
}

TEST_F(Printing, AHeldJobIsChangedAndReleased) {
    const auto held = run({"-d", "Sample", "-H", "hold", page()});
    const int job = jobOf(held.output);
    ASSERT_NE(job, 0) << held.errors;
    EXPECT_EQ(run({"-i", "Sample-" + std::to_string(job), "-n", "5", "-H", "resume"}).status, kExitDone);
    const auto record = server().waitForRecord(job);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->copies, "5");
}

TEST_F(Printing, AHeldJobIsChangedByOptionsToo) {
    const int job = jobOf(run({"-d", "Sample", "-H", "hold", page()}).output);
    ASSERT_NE(job, 0);
    const auto change = [&](const std::string& options) { return run({"-i", std::to_string(job), "-o", options}); };
    EXPECT_EQ(change("job-priority=77 copies=3 job-name=Letter").errors, "");
    EXPECT_EQ(server().jobAttribute(job, "job-priority"), "77");
    EXPECT_EQ(server().jobAttribute(job, "copies"), "3");
    EXPECT_EQ(server().jobAttribute(job, "job-name"), "Letter");
    EXPECT_EQ(change("job-priority=78 copies=many").status, kExitNotPrinted);
    EXPECT_EQ(server().jobAttribute(job, "job-priority"), "77");
    EXPECT_EQ(change("job-hold-until=no-hold").status, kExitDone);
    EXPECT_TRUE(server().waitForRecord(job));
}

TEST_F(Printing, WhatNoServerTakesIsToldBeforeThePanelsAreAsked) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"-d", "Sample", folder_.path() / "missing.pdf"},
          {"-d", "Sample", "-o", "page-ranges=x", page()},
          {"-d", "Sample", "-o", "Frob={a=b}", page()}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto result = run(arguments);
        EXPECT_EQ(result.status, kExitNotPrinted);
        EXPECT_EQ(linesOf(result.errors).size(), 1U) << result.errors; // no alert
    }
    const auto checked = run({"-d", "Sample", "--check", "-o", "page-ranges=x"});
    EXPECT_EQ(checked.status, kExitCheckFailed);
    EXPECT_THAT(linesOf(checked.errors), ElementsAre(HasSubstr("page-ranges")));
    EXPECT_EQ(run({"-d", "Sample", "--check", "-o", "job-frob=2"}).status, kExitCheckFailed);
    EXPECT_EQ(run({"-d", "Sample", "--check", "-o", "media="}).status, kExitCheckFailed);
}

TEST_F(Printing, WhatCannotBePrintedIsOneLineAndAStatus) {
    const std::string file = page();
    struct Case {
        std::vector<std::string> arguments;
        const char* named;
    };
    const Case kCases[] = {
        {{"-d", "Nobody", file}, "Nobody"},
        {{"-d", "Sample/nothing", file}, "see --presets"},
        {{"-d", "Nobody", "--presets"}, "name another one by -d"},
        {{"-d", "Sample", folder_.path() / "missing.pdf"}, "missing.pdf"},
        {{"-h", "/no/such/socket", "-d", "Sample", file}, "No connection"},
        {{"-h", "/no/such/socket", "-d", "Sample", folder_.path() / "missing.pdf"}, "missing.pdf"},
        {{"-i", "99999", "-n", "2"}, "99999"},
    };
    for (const auto& [arguments, named] : kCases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        std::vector<std::string> quietly = arguments;
        quietly.insert(quietly.begin(), "--no-alerts");
        const auto result = run(quietly);
        EXPECT_EQ(result.status, kExitNotPrinted);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(linesOf(result.errors), ElementsAre(AllOf(testing::StartsWith("lp: "), HasSubstr(named))));
    }
}

} // namespace
} // namespace host
