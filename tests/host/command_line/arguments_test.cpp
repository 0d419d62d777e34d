#include "host/command_line/arguments.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CommandLineArguments : public testing::Test {
protected:
    static Arguments read(const std::vector<std::string>& given, const std::string& program = "corvane-print") {
        std::string error;
        const Arguments arguments = readArguments(asCalled(given, program), error);
        EXPECT_EQ(error, "");
        return arguments;
    }
    static std::string errorOf(const std::vector<std::string>& given) {
        std::string error;
        (void)readArguments(asCalled(given, "lp"), error);
        return error;
    }
    static std::vector<std::string> textsOf(const std::vector<JobOption>& options) {
        std::vector<std::string> texts;
        for (const JobOption& option : options)
            texts.push_back(option.name + "=" + option.value);
        return texts;
    }

private:
    static std::vector<std::string> asCalled(std::vector<std::string> given, const std::string& program) {
        given.insert(given.begin(), program);
        return given;
    }
};

TEST_F(CommandLineArguments, LpsLettersAreUnderstood) {
    const Arguments read = CommandLineArguments::read(
        {"-d",          "Office/photo", "-n",   "3",  "-t", "A title", "-q", "70", "-H",    "18:30",   "-h",
         "server:8631", "-U",           "anna", "-E", "-s", "-c",      "-m", "-P", "1-3,5", "page.pdf"});
    EXPECT_EQ(read.queue, "Office");
    EXPECT_EQ(read.instance, "photo");
    EXPECT_EQ(read.copies, 3);
    EXPECT_EQ(read.title, "A title");
    EXPECT_EQ(read.priority, 70);
    EXPECT_EQ(read.holdUntil, "18:30");
    EXPECT_EQ(read.server, "server:8631");
    EXPECT_EQ(read.user, "anna");
    EXPECT_TRUE(read.encrypts);
    EXPECT_TRUE(read.isSilent);
    EXPECT_THAT(textsOf(read.options), ElementsAre("page-ranges=1-3,5"));
    EXPECT_THAT(read.files, ElementsAre("page.pdf"));
}

TEST_F(CommandLineArguments, LettersMayBeJoinedAndFollowFiles) {
    const Arguments read = CommandLineArguments::read({"first", "-sn2", "second", "--", "-third"});
    EXPECT_TRUE(read.isSilent);
    EXPECT_EQ(read.copies, 2);
    EXPECT_THAT(read.files, ElementsAre("first", "second", "-third"));
}

TEST_F(CommandLineArguments, LettersFollowFilesAlsoWhereTheSystemWouldEndThem) {
    ::setenv("POSIXLY_CORRECT", "1", 1);
    const Arguments read = CommandLineArguments::read({"first", "-n2", "second", "--dry-run", "--", "-d"});
    ::unsetenv("POSIXLY_CORRECT");
    EXPECT_EQ(read.copies, 2);
    EXPECT_TRUE(read.dryRun);
    EXPECT_THAT(read.files, ElementsAre("first", "second", "-d"));
}

TEST_F(CommandLineArguments, ADashIsStandardInput) {
    EXPECT_THAT(read({"-", "page.pdf"}).files, ElementsAre("-", "page.pdf"));
}

TEST_F(CommandLineArguments, OptionsMayStandTogetherAndComeByName) {
    EXPECT_THAT(
        textsOf(read({"-o", "media=A4 CVMediaType=Glossy", "-o", "fit-to-page", "-o", "nocollate", "-o",
                      "CVMediaType=Plain"})
                    .options),
        ElementsAre("CVMediaType=Glossy", "media=A4", "fit-to-page=true", "collate=false", "CVMediaType=Plain"));
}

TEST_F(CommandLineArguments, WordsForHoldingAreTranslated) {
    struct Word {
        const char* given;
        const char* holdUntil;
        int priority;
    };
    constexpr Word kWords[] = {
        {"hold", "indefinite", 0}, {"resume", "no-hold", 0}, {"immediate", "no-hold", 100}, {"night", "night", 0}};
    for (const auto& [given, holdUntil, priority] : kWords) {
        SCOPED_TRACE(given);
        EXPECT_EQ(read({"-H", given}).holdUntil, holdUntil);
        EXPECT_EQ(read({"-H", given}).priority, priority);
    }
}

TEST_F(CommandLineArguments, TimesForHoldingAndPagesAreTakenAsTheyStand) {
    for (const char* time : {"18:30", "00:00", "23:59:59", "weekend"})
        EXPECT_EQ(read({"-H", time}).holdUntil, time);
    for (const char* pages : {"1", "1-3,5", "2-", "1,3-7,9-"})
        EXPECT_THAT(textsOf(read({"-P", pages}).options), ElementsAre(std::string("page-ranges=") + pages));
}

TEST_F(CommandLineArguments, TheProgramsNameDecidesWhetherThereIsADialog) {
    struct Case {
        const char* program;
        std::vector<std::string> arguments;
        bool showsDialog;
    };
    const Case kCases[] = {
        {"corvane-print", {}, true},
        {"/usr/bin/corvane-print", {"--no-dialog"}, false},
        {"lp", {}, false},
        {"/usr/bin/lp", {"--dialog"}, true},
        {"corvane-print", {"--dry-run"}, false},
        {"corvane-print", {"--check"}, false},
        {"corvane-print", {"-i", "12", "-n", "2"}, false},
        {"corvane-print", {"--presets"}, false},
        {"corvane-print", {"--save-preset", "photo"}, false},
        {"corvane-print", {"--preset", "photo"}, true},
    };
    for (const auto& [program, arguments, showsDialog] : kCases) {
        SCOPED_TRACE(std::string(program) + " " + testing::PrintToString(arguments));
        EXPECT_EQ(read(arguments, program).showsDialog, showsDialog);
    }
}

TEST_F(CommandLineArguments, WhatIsWrongIsNamed) {
    struct Case {
        std::vector<std::string> arguments;
        const char* named;
    };
    const Case kCases[] = {
        {{"-Z"}, "\"-Z\""},
        {{"--colour"}, "\"--colour\""},
        {{"-d"}, "-d needs a value"},
        {{"--ppd"}, "--ppd needs a value"},
        {{"-d", "/photo"}, "queue's name"},
        {{"-n", "0"}, "copies"},
        {{"-n", "10000"}, "copies"},
        {{"-n", "two"}, "copies"},
        {{"-q", "101"}, "priority"},
        {{"-q", "0"}, "priority"},
        {{"-o", ""}, "-o needs a value"},
        {{"-o", "=x"}, "name and a value"},
        {{"--json"}, "--dry-run"},
        {{"--ppd", ""}, "--ppd needs a value that is not empty"},
        {{"-h", ""}, "-h needs a value that is not empty"},
        {{"-P", "x-y"}, "pages"},
        {{"-P", "5-2"}, "pages"},
        {{"-P", "3,1"}, "pages"},
        {{"-P", "1-,5"}, "pages"},
        {{"-P", "1,"}, "pages"},
        {{"-P", "0"}, "pages"},
        {{"-H", "banana"}, "banana"},
        {{"-H", "24:00"}, "24:00"},
        {{"-H", "12:60"}, "12:60"},
        {{"-H", "12"}, "\"12\""},
        {{"--rename-preset", "photo"}, "OLD=NEW"},
        {{"--rename-preset", "=photo"}, "OLD=NEW"},
        {{"--presets", "--save-preset", "x"}, "alone"},
        {{"--delete-preset", "x", "--dry-run"}, "alone"},
        {{"--save-preset", "x", "page.pdf"}, "no files"},
        {{"--system", "page.pdf"}, "--system"},
        {{"--dialog", "--presets"}, "--dialog"},
        {{"--dialog", "--check"}, "--dialog"},
        {{"--dialog", "-i", "3"}, "--dialog"},
        {{"-i", "3", "page.pdf"}, "no files"},
        {{"-H", "restart"}, "-i"},
        {{"-i", "3", "-n", "2", "--dry-run"}, "-i does not go with"},
        {{"-i", "3", "-n", "2", "--check"}, "-i does not go with"},
        {{"--dialog", "--stop-on-alert"}, "--stop-on-alert goes with --no-dialog"},
        {{"--dialog", "--no-alerts"}, "--no-alerts goes with --no-dialog"},
    };
    for (const auto& [arguments, named] : kCases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        EXPECT_THAT(errorOf(arguments), HasSubstr(named));
    }
}

TEST_F(CommandLineArguments, TheHelpNamesEveryOption) {
    for (const char* option : {"-d",
                               "-o",
                               "-n",
                               "-P",
                               "-t",
                               "-q",
                               "-H",
                               "-i",
                               "-h",
                               "-U",
                               "-E",
                               "-s",
                               "-c, -m",
                               "--dialog",
                               "--no-dialog",
                               "--no-alerts",
                               "--json",
                               "--dry-run",
                               "--check",
                               "--explain",
                               "--summary",
                               "--stop-on-alert",
                               "--ppd",
                               "--to",
                               "--help",
                               "--version",
                               "--bundle",
                               "--preset",
                               "--presets",
                               "--save-preset",
                               "--rename-preset",
                               "--delete-preset",
                               "--system"})
        EXPECT_THAT(usage("lp"), HasSubstr(option));
}

} // namespace
} // namespace host
