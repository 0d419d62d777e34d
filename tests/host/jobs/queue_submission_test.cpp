#include "host/jobs/job_text.h"
#include "tests/host/jobs/plain_user.h"
#include "tests/host/jobs/queue_test.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <vector>

namespace host {
namespace {

using test_support::JobRecord;
using test_support::PrivateCupsd;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::Pair;

class QueueSubmission : public QueueTest {};

TEST_F(QueueSubmission, TheFilterGetsTitleCopiesAndDocument) {
    JobRequest job = request("the contents\n");
    job.title = "A title";
    job.copies = 7;
    const JobRecord record = printed(job);
    EXPECT_EQ(record.title, "A title");
    EXPECT_EQ(record.copies, "7");
    EXPECT_EQ(record.data, "the contents\n");
}

TEST_F(QueueSubmission, AResultTellsTheQueuesNumber) {
    const JobResult result = submitToQueue(queue(), request());
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_THAT(server().jobStates(), Contains(Key(result.jobId)));
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(result.note, IsEmpty());
}

TEST_F(QueueSubmission, ALargeDocumentArrivesByteForByte) {
    const std::string contents = test_support::variedBytes(9'000'001);
    EXPECT_TRUE(printed(request(contents)).data == contents); // a comparison that prints would print all of it
}

TEST_F(QueueSubmission, ADocumentOfOneByteArrives) {
    EXPECT_EQ(printed(request("x")).data, "x");
}

TEST_F(QueueSubmission, ProgressTellsEveryPieceUpToTheWholeDocument) {
    const std::string contents = test_support::variedBytes(300'000);
    std::vector<std::uint64_t> sent;
    const JobResult result = submitToQueue(queue(), request(contents), {}, [&](std::uint64_t bytes, std::uint64_t all) {
        EXPECT_EQ(all, contents.size());
        sent.push_back(bytes);
        return true;
    });
    EXPECT_TRUE(result.ok) << result.error;
    ASSERT_GT(sent.size(), 1U);
    EXPECT_TRUE(std::ranges::is_sorted(sent));
    EXPECT_EQ(sent.back(), contents.size());
}

TEST_F(QueueSubmission, TheLoopbackPortServesAsWell) {
    const JobRecord record = printed(request("by port\n"), {server().hostAndPort(), kQueue});
    EXPECT_EQ(record.data, "by port\n");
}

TEST_F(QueueSubmission, WithoutAnAddressTheConfiguredServerIsUsed) {
    ::setenv("CUPS_SERVER", server().socket().c_str(), 1);
    std::string data; // a thread of its own, because the library remembers the server for each thread
    std::thread([&] { data = printed(request("configured\n"), {"", kQueue}).data; }).join();
    ::unsetenv("CUPS_SERVER");
    EXPECT_EQ(data, "configured\n");
}

TEST_F(QueueSubmission, JobsAtTheSameTimeDoNotMix) {
    constexpr std::size_t kJobs = 6;
    std::vector<JobRequest> jobs;
    for (std::size_t index = 0; index < kJobs; ++index) {
        const std::string name = "page" + std::to_string(index);
        const std::string contents = name + test_support::variedBytes(500'000 + index);
        jobs.push_back({.documentPath = folder_.write(name, contents), .options = {{"Page", name}}});
    }
    std::vector<JobRecord> records(kJobs);
    std::vector<std::thread> threads;
    for (std::size_t index = 0; index < kJobs; ++index)
        threads.emplace_back([&, index] { records[index] = printed(jobs[index]); });
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t index = 0; index < kJobs; ++index) {
        EXPECT_EQ(records[index].title, "page" + std::to_string(index));
        EXPECT_EQ(records[index].options["Page"], "page" + std::to_string(index));
        EXPECT_TRUE(records[index].data == test_support::contentsOf(jobs[index].documentPath));
    }
}

TEST_F(QueueSubmission, OddTitlesArriveCleaned) {
    const std::pair<std::string, std::string> kTitles[] = {
        {"two\nlines", "two lines"},
        {"caf\xE9", "caf\xEF\xBF\xBD"},
        {"bell\x07 and \x1B[31mred", "bell  and  [31mred"},
        {"\xE6\x97\xA5\xE6\x9C\xAC $(id) `id` 'x' \"y\" \\ %s", "\xE6\x97\xA5\xE6\x9C\xAC $(id) `id` 'x' \"y\" \\ %s"},
        {std::string(300, 'x'), std::string(255, 'x')},
        {std::string(254, 'x') + "\xC3\xBC", std::string(254, 'x')},
        {std::string(10'000, 'y'), std::string(255, 'y')},
        {std::string(10'000, '\n') + "z", "z"},
        {std::string("nu\0ll", 5), "nu ll"},
        {"-rf", "-rf"},
        {"", "page.txt"},
    };
    for (const auto& [sent, arrived] : kTitles) {
        SCOPED_TRACE(sent);
        JobRequest job = request();
        job.title = sent;
        EXPECT_EQ(printed(job).title, arrived);
    }
}

TEST_F(QueueSubmission, DocumentsOfEveryNameArrive) {
    std::vector<std::string> names{"-", "--", "-rf", "...", " ", "\"'`$(id);&|", std::string(255, 'n')};
    constexpr int kBytesOfAName = 16;
    for (int first = 0; first < 0x100; first += kBytesOfAName) {
        std::string& name = names.emplace_back("a");
        for (int byte = first; byte < first + kBytesOfAName; ++byte)
            if (byte != 0 && byte != '/')
                name += static_cast<char>(byte);
        name += 'z';
    }
    std::map<int, std::string> sent;
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const JobResult result =
            submitToQueue(queue(), {.documentPath = folder_.write(name, "in " + name), .options = {{"Key", "value"}}});
        ASSERT_TRUE(result.ok) << result.error;
        sent[result.jobId] = name;
    }
    for (const auto& [job, name] : sent) {
        SCOPED_TRACE(name);
        const auto record = server().waitForRecord(job);
        ASSERT_TRUE(record) << server().errorLog();
        EXPECT_EQ(record->data, "in " + name);
        EXPECT_EQ(record->title, documentName(name));
        EXPECT_EQ(record->options.at("Key"), "value");
    }
}

TEST_F(QueueSubmission, OddQueueNamesAreReached) {
    for (const std::string name :
         {"-x", "..", ".hidden", "\xE6\x97\xA5\xE6\x9C\xAC", "a%20b", "B\xC3\xBCro+1", "$(id)", "a:b@c"}) {
        SCOPED_TRACE(name);
        server().addQueue(name, kRecordingPpd);
        EXPECT_EQ(printed(request("to " + name), {server().socket(), name}).data, "to " + name);
    }
}

TEST_F(QueueSubmission, APausedQueueTakesTheJobAndSaysThatItWaits) {
    server().addQueue("Paused", kRecordingPpd);
    server().pauseQueue("Paused");
    const JobResult result = submitToQueue({server().socket(), "Paused"}, request());
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_THAT(result.note, HasSubstr("paused"));
    EXPECT_THAT(server().jobStates(), Contains(Pair(result.jobId, "pending")));
}

TEST_F(QueueSubmission, AHeldJobWaitsForItsRelease) {
    JobRequest job = request();
    job.holdUntil = "indefinite";
    const JobResult result = submitToQueue(queue(), job);
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_THAT(result.note, HasSubstr("held"));
    EXPECT_THAT(server().jobStates(), Contains(Pair(result.jobId, "pending-held")));
}

TEST_F(QueueSubmission, ARawJobGoesPastTheFilter) {
    JobRequest job = request("untouched\n");
    job.options = {{"raw", "true"}};
    const JobResult result = submitToQueue(queue(), job);
    ASSERT_TRUE(result.ok) << result.error;
    const auto next = submitToQueue(queue(), request()); // queued behind it: once recorded, the raw one is done
    ASSERT_TRUE(next.ok) << next.error;
    ASSERT_TRUE(server().waitForRecord(next.jobId));
    const std::filesystem::path stem = server().recordFolder() / ("job-" + std::to_string(result.jobId));
    EXPECT_FALSE(std::filesystem::exists(stem.string() + ".data"));
    EXPECT_EQ(test_support::contentsOf(stem.string() + ".printed"), "untouched\n");
}

TEST_F(QueueSubmission, AServerWithoutHistoryCountsAsConfirmation) {
    PrivateCupsd server({.configuration = "PreserveJobHistory No\nPreserveJobFiles No\n"});
    server.addQueue(kQueue, kRecordingPpd);
    const JobResult result = submitToQueue({server.socket(), kQueue}, request());
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_TRUE(server.waitForRecord(result.jobId));
}

TEST(QueueSubmissionAsPlainUser, AJobReachesAPlainUsersServer) {
    PrivateCupsd server({.user = test_support::plainUser()});
    server.addQueue(kQueue, kRecordingPpd);
    const test_support::ScratchFolder folder;
    const JobRequest job{
        .documentPath = folder.write("page.txt", "plain\n"), .title = "Plain", .options = {{"InkMedia", "Glossy"}}};
    const std::string answer = test_support::asPlainUser([&] {
        const JobResult result = submitToQueue({server.socket(), kQueue}, job);
        return result.ok ? std::to_string(result.jobId) : result.error;
    });
    ASSERT_EQ(answer, "1") << server.errorLog();
    const auto record = server.waitForRecord(1);
    ASSERT_TRUE(record) << server.errorLog();
    EXPECT_EQ(record->data, "plain\n");
    EXPECT_EQ(record->options.at("InkMedia"), "Glossy");
}

TEST(QueueSubmissionAsPlainUser, AJobReachesTheTestersOwnServer) {
    PrivateCupsd server;
    server.addQueue(kQueue, kRecordingPpd);
    const test_support::ScratchFolder folder;
    const JobRequest job{.documentPath = folder.write("page.txt", "plain\n"), .title = "Plain"};
    const std::string answer = test_support::asPlainUser([&] {
        const JobResult result = submitToQueue({server.socket(), kQueue}, job);
        return result.ok ? std::to_string(result.jobId) : result.error;
    });
    ASSERT_EQ(answer, "1") << server.errorLog();
    EXPECT_TRUE(server.waitForRecord(1)) << server.errorLog();
}

} // namespace
} // namespace host
