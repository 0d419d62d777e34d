#include "host/jobs/folder_submission.h"
#include "tests/host/jobs/plain_user.h"
#include "tests/support/scratch_folder.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace host {
namespace {

namespace fs = std::filesystem;
using test_support::contentsOf;
using test_support::namesIn;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FolderSubmission : public testing::Test {
protected:
    JobRequest request(const std::string& name = "picture.pdf", std::string_view contents = "%PDF a picture\n") const {
        return {.documentPath = documents_.write(name, contents), .title = "Picture"};
    }
    std::string folder() const { return out_.path() / "out"; }

    /// Prints and reads the ticket.
    nlohmann::json ticketOf(const JobRequest& job) const {
        const JobResult result = submitToFolder(folder(), job);
        EXPECT_TRUE(result.ok) << result.error;
        return nlohmann::json::parse(contentsOf(result.path));
    }

    const test_support::ScratchFolder documents_;
    const test_support::ScratchFolder out_;
};

TEST_F(FolderSubmission, TheTicketSaysWhatTheJobIs) {
    JobRequest job = request();
    job.copies = 3;
    job.options = {{"InkMedia", "Glossy"}, {"com.corvane.print.PrintSettings.advancedItem", "1"}};
    const nlohmann::json expected = {
        {"title", "Picture"},
        {"copies", 3},
        {"document", "picture.pdf"},
        {"options", {{"InkMedia", "Glossy"}, {"com.corvane.print.PrintSettings.advancedItem", "1"}}}};
    EXPECT_EQ(ticketOf(job), expected);
}

TEST_F(FolderSubmission, TheTicketsPathAndTheDocumentsBytesAreThere) {
    const std::string contents = test_support::variedBytes(1'000'003);
    const JobResult result = submitToFolder(folder(), request("big.bin", contents));
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_EQ(result.path, folder() + "/ticket.json");
    EXPECT_TRUE(contentsOf(folder() + "/big.bin") == contents);
    EXPECT_THAT(namesIn(folder()), ElementsAre("big.bin", "ticket.json"));
}

TEST_F(FolderSubmission, AJobWithoutOptionsHasAnEmptyObjectOfThem) {
    EXPECT_EQ(ticketOf(request())["options"], nlohmann::json::object());
}

TEST_F(FolderSubmission, MissingFoldersAreMade) {
    const std::string deep = out_.path() / "a/b/c";
    EXPECT_EQ(submitToFolder(deep, request()).path, deep + "/ticket.json");
    EXPECT_EQ(submitToFolder(deep + "/d/", request()).path, deep + "/d/ticket.json");
}

TEST_F(FolderSubmission, NamesThatAreTakenGetANumber) {
    EXPECT_EQ(ticketOf(request("picture.pdf", "first"))["document"], "picture.pdf");
    EXPECT_EQ(ticketOf(request("picture.pdf", "second"))["document"], "picture-2.pdf");
    EXPECT_EQ(submitToFolder(folder(), request("picture.pdf", "third")).path, folder() + "/ticket-3.json");
    EXPECT_EQ(contentsOf(folder() + "/picture.pdf"), "first");
    EXPECT_EQ(contentsOf(folder() + "/picture-2.pdf"), "second");
    EXPECT_EQ(contentsOf(folder() + "/picture-3.pdf"), "third");
}

TEST_F(FolderSubmission, ALinkThatStandsInTheWayIsNotFollowed) {
    fs::create_directory(folder());
    const std::string precious = documents_.write("precious", "keep me");
    fs::create_symlink(precious, folder() + "/ticket.json");
    fs::create_symlink(documents_.path() / "not-there", folder() + "/picture.pdf");
    EXPECT_EQ(ticketOf(request())["document"], "picture-2.pdf");
    EXPECT_EQ(contentsOf(precious), "keep me");
    EXPECT_FALSE(fs::exists(documents_.path() / "not-there"));
}

TEST_F(FolderSubmission, ADocumentIsPrintedToItsOwnFolder) {
    const JobResult result = submitToFolder(documents_.path(), request("own.pdf", "own"));
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_THAT(namesIn(documents_.path()), ElementsAre("own-2.pdf", "own.pdf", "ticket.json"));
}

TEST_F(FolderSubmission, OddDocumentNamesBecomeTidyOnes) {
    const std::pair<std::string, std::string> kNames[] = {
        {"ticket.json", "document-ticket.json"},
        {"ticket-2.json", "document-ticket-2.json"},
        {"two\nlines.pdf", "two lines.pdf"},
        {"caf\xE9.pdf", "caf\xEF\xBF\xBD.pdf"},
        {"-rf.pdf", "-rf.pdf"},
        {".hidden", ".hidden"},
        {"no extension", "no extension"},
        {"\xE6\x97\xA5\xE6\x9C\xAC.pdf", "\xE6\x97\xA5\xE6\x9C\xAC.pdf"},
        {" .", "document"},
        {std::string(251, 'n') + ".pdf", std::string(200, 'n') + ".pdf"},
        {"a." + std::string(253, 'e'), "a." + std::string(198, 'e')},
    };
    for (const auto& [name, expected] : kNames) {
        SCOPED_TRACE(name);
        EXPECT_EQ(ticketOf(request(name))["document"], expected);
        EXPECT_EQ(contentsOf(folder() + "/" + expected), "%PDF a picture\n");
    }
}

TEST_F(FolderSubmission, DocumentsOfEveryNameStayInTheFolder) {
    for (int byte = 1; byte < 0x100; ++byte)
        if (byte != '/') {
            const std::string name = std::string("a") + static_cast<char>(byte) + "..";
            SCOPED_TRACE(name);
            const std::string copy = ticketOf(request(name, name))["document"];
            EXPECT_EQ(copy.find('/'), std::string::npos);
            EXPECT_EQ(contentsOf(folder() + "/" + copy), name);
        }
    EXPECT_THAT(namesIn(out_.path()), ElementsAre("out"));
}

TEST_F(FolderSubmission, OddTitlesAreCleaned) {
    JobRequest job = request();
    job.title = "two\nlines \x1B[31m caf\xE9 \"quoted\" \\";
    EXPECT_EQ(ticketOf(job)["title"], "two lines  [31m caf\xEF\xBF\xBD \"quoted\" \\");
    job.title = "";
    EXPECT_EQ(ticketOf(job)["title"], "picture.pdf");
}

TEST_F(FolderSubmission, EveryTextOfAnOptionIsWrittenDown) {
    JobRequest job = request();
    job.options = {{"Brace", "{a=b}"}, {"Lines", "two\nlines"},          {"Long", std::string(40'000, 'x')},
                   {"Flag", "True"},   {"\xE6\x97\xA5", "\xE6\x9C\xAC"}, {"Twice", "first"},
                   {"Twice", "last"}};
    const nlohmann::json expected = {
        {"Brace", "{a=b}"}, {"Lines", "two\nlines"},          {"Long", std::string(40'000, 'x')},
        {"Flag", "True"},   {"\xE6\x97\xA5", "\xE6\x9C\xAC"}, {"Twice", "last"}};
    EXPECT_EQ(ticketOf(job)["options"], expected);
}

TEST_F(FolderSubmission, WhatATicketCannotSayIsRefused) {
    JobRequest job = request();
    job.options = {{"Key", "caf\xE9"}};
    EXPECT_THAT(submitToFolder(folder(), job).error, AllOf(HasSubstr("\"Key\""), HasSubstr("UTF-8")));
    job.options = {{"", "value"}};
    EXPECT_THAT(submitToFolder(folder(), job).error, HasSubstr("no name"));
    job.options.clear();
    job.copies = 0;
    EXPECT_THAT(submitToFolder(folder(), job).error, HasSubstr("0 copies"));
    EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(FolderSubmission, AMissingDocumentMakesNoFolder) {
    const JobResult result =
        submitToFolder(folder(), {.documentPath = documents_.path() / "missing.pdf", .title = "x"});
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.error, AllOf(HasSubstr("missing.pdf"), HasSubstr("No such file")));
    EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(FolderSubmission, AFileInTheFoldersPlaceIsNamed) {
    const std::string file = out_.write("file", "x");
    for (const std::string& place : {file, file + "/below"}) {
        const JobResult result = submitToFolder(place, request());
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.error, AllOf(HasSubstr(place), HasSubstr("Not a directory")));
    }
    EXPECT_EQ(contentsOf(file), "x");
}

TEST_F(FolderSubmission, AFolderWhereNothingCanBeMadeIsNamed) {
    for (const std::string place : {"/proc", "/proc/out"}) {
        const JobResult result = submitToFolder(place, request());
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.error, HasSubstr("\"" + place + "\""));
    }
    EXPECT_THAT(submitToFolder("", request()).error, HasSubstr("No folder"));
}

TEST_F(FolderSubmission, APlainUserLearnsThatAFolderIsNotHis) {
    fs::create_directory(folder());
    fs::permissions(folder(), fs::perms(0555));
    const JobRequest job = request();
    EXPECT_THAT(test_support::asPlainUser([&] { return submitToFolder(folder(), job).error; }),
                AllOf(HasSubstr(folder()), HasSubstr("Permission denied")));
    EXPECT_THAT(namesIn(folder()), IsEmpty());
}

TEST_F(FolderSubmission, APlainUserPrintsToAFolderOfHis) {
    fs::permissions(out_.path(), fs::perms(0777));
    const JobRequest job = request();
    EXPECT_EQ(test_support::asPlainUser([&] {
                  const JobResult result = submitToFolder(folder(), job);
                  return result.path + result.error;
              }),
              folder() + "/ticket.json");
    EXPECT_EQ(contentsOf(folder() + "/picture.pdf"), "%PDF a picture\n");
}

TEST_F(FolderSubmission, ADocumentThatAPlainUserMayNotReadIsNamed) {
    const JobRequest job = request();
    fs::permissions(job.documentPath, fs::perms::none);
    EXPECT_THAT(test_support::asPlainUser([&] { return submitToFolder(folder(), job).error; }),
                AllOf(HasSubstr("picture.pdf"), HasSubstr("Permission denied")));
}

TEST_F(FolderSubmission, AFullDiskLeavesNothingBehind) {
    const JobRequest job = request("big.bin", test_support::variedBytes(1'000'000));
    fs::permissions(out_.path(), fs::perms(0777));
    const std::string error = test_support::asPlainUser([&] { // a limit on the size of files stands for the disk's end
        const rlimit limit{300'000, 300'000};
        ::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return submitToFolder(folder(), job).error;
    });
    EXPECT_THAT(error, AllOf(HasSubstr(folder()), HasSubstr("File too large")));
    EXPECT_THAT(namesIn(folder()), IsEmpty());
}

TEST_F(FolderSubmission, AFullFileSystemIsToldAndLeavesNothingBehind) {
    const JobRequest job = request("big.bin", test_support::variedBytes(1'000'000));
    fs::create_directory(folder());
    const std::string answer = test_support::asPlainUser([&] {
        if (!test_support::mountSmallFileSystem(folder(), 256 * 1024))
            return std::string();
        const std::string error = submitToFolder(folder(), job).error;
        return error + (fs::is_empty(folder()) ? " Nothing is left." : " Something is left.");
    });
    if (answer.empty())
        GTEST_SKIP() << "no file system may be mounted here: only the limit on files' sizes stands for a full disk";
    EXPECT_THAT(answer, AllOf(HasSubstr(folder()), HasSubstr("No space left"), HasSubstr("free space"),
                              HasSubstr("Nothing is left.")));
}

TEST_F(FolderSubmission, ATicketThatCannotBeWrittenTakesTheCopyWithIt) {
    JobRequest job = request("small.bin", "small");
    job.options = {{"Long", std::string(200'000, 'x')}};
    fs::permissions(out_.path(), fs::perms(0777));
    const std::string error = test_support::asPlainUser([&] {
        const rlimit limit{100'000, 100'000};
        ::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return submitToFolder(folder(), job).error;
    });
    EXPECT_THAT(error, HasSubstr("File too large"));
    EXPECT_THAT(namesIn(folder()), IsEmpty());
}

TEST_F(FolderSubmission, AGivenUpJobLeavesNothingBehind) {
    const JobRequest job = request("big.bin", test_support::variedBytes(1'000'000));
    const JobResult result =
        submitToFolder(folder(), job, [](std::uint64_t copied, std::uint64_t) { return copied < 500'000; });
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.error, HasSubstr("given up"));
    EXPECT_THAT(namesIn(folder()), IsEmpty());
}

TEST_F(FolderSubmission, JobsAtTheSameTimeDoNotMeet) {
    constexpr int kJobs = 8;
    std::vector<JobRequest> jobs;
    for (int index = 0; index < kJobs; ++index) {
        fs::create_directory(documents_.path() / std::to_string(index));
        jobs.push_back(request(std::to_string(index) + "/same.txt", "document " + std::to_string(index)));
        jobs.back().title = std::to_string(index);
    }
    std::vector<JobResult> results(kJobs);
    std::vector<std::thread> threads;
    for (int index = 0; index < kJobs; ++index)
        threads.emplace_back([&, index] { results[index] = submitToFolder(folder(), jobs[index]); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(namesIn(folder()).size(), 2U * kJobs);
    for (int index = 0; index < kJobs; ++index) {
        ASSERT_TRUE(results[index].ok) << results[index].error;
        const nlohmann::json ticket = nlohmann::json::parse(contentsOf(results[index].path));
        EXPECT_EQ(ticket["title"], std::to_string(index));
        EXPECT_EQ(contentsOf(fs::path(folder()) / ticket["document"].get<std::string>()),
                  "document " + std::to_string(index));
    }
}

} // namespace
} // namespace host
