#include "host/jobs/queues.h"

#include "host/jobs/job_changes.h"
#include "tests/host/jobs/queue_test.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <future>

namespace host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr JobLimits kShort = {.connect = std::chrono::milliseconds(500), .response = std::chrono::milliseconds(500)};

/// The private server with a second, rejecting queue, and a home of each test's own for its lpoptions.
class Queues : public QueueTest {
protected:
    static void SetUpTestSuite() {
        QueueTest::SetUpTestSuite();
        server().addQueue("Second", kRecordingPpd);
        server().rejectJobs("Second");
    }
    Queues() {
        ::setenv("HOME", folder_.path().c_str(), 1);
        ::unsetenv("LPDEST");
        ::unsetenv("PRINTER");
    }

    void keepOptions(const std::string& lines) const {
        std::filesystem::create_directory(folder_.path() / ".cups");
        std::ofstream(folder_.path() / ".cups" / "lpoptions") << lines;
    }
    /// The library reads HOME once in each thread: a new one reads this test's.
    static QueueList queuesOfThisHome() {
        return std::async(std::launch::async, [] { return listQueues(server().socket()); }).get();
    }
    static Queue queueNamed(const std::string& name, const std::string& instance = "") {
        const QueueList list = queuesOfThisHome();
        EXPECT_EQ(list.error, "");
        const auto found = std::ranges::find_if(
            list.queues, [&](const Queue& each) { return each.name == name && each.instance == instance; });
        EXPECT_NE(found, list.queues.end()) << name << "/" << instance;
        return found == list.queues.end() ? Queue() : *found;
    }
    static std::vector<std::string> optionsOf(const Queue& queue) {
        std::vector<std::string> texts;
        for (const JobOption& option : queue.options)
            texts.push_back(option.name + "=" + option.value);
        return texts;
    }
};

TEST_F(Queues, OfTheServerAreListedByName) {
    const QueueList list = listQueues(server().socket());
    EXPECT_EQ(list.error, "");
    std::vector<std::string> names;
    for (const Queue& queue : list.queues)
        names.push_back(queue.name);
    EXPECT_THAT(names, ElementsAre("Recorder", "Second"));
}

TEST_F(Queues, OfARemoteServerAreListedToo) {
    const QueueList list = listQueues(server().hostAndPort());
    EXPECT_EQ(list.error, "");
    EXPECT_EQ(list.queues.size(), 2U);
}

TEST_F(Queues, TellWhetherTheyAcceptJobs) {
    EXPECT_TRUE(queueNamed("Recorder").isAccepting);
    EXPECT_FALSE(queueNamed("Second").isAccepting);
    EXPECT_EQ(queueNamed("Recorder").state, "idle");
}

TEST_F(Queues, KeepNoOptionsOfTheServersOwn) {
    EXPECT_THAT(optionsOf(queueNamed("Recorder")), IsEmpty());
}

TEST_F(Queues, KeepWhatTheUsersOptionsSay) {
    keepOptions("Dest Recorder InkMedia=Glossy sides=two-sided-long-edge copies=3\n");
    EXPECT_THAT(optionsOf(queueNamed("Recorder")),
                testing::UnorderedElementsAre("InkMedia=Glossy", "sides=two-sided-long-edge", "copies=3"));
}

TEST_F(Queues, HaveTheUsersInstances) {
    keepOptions("Dest Recorder PageSize=A5\nDest Recorder/photo InkMedia=Glossy\n");
    EXPECT_THAT(optionsOf(queueNamed("Recorder", "photo")), testing::Contains("InkMedia=Glossy"));
    EXPECT_THAT(optionsOf(queueNamed("Recorder")), ElementsAre("PageSize=A5"));
}

TEST_F(Queues, HaveTheDefaultThatTheUserNamed) {
    keepOptions("Default Second\n");
    EXPECT_TRUE(queueNamed("Second").isDefault);
    EXPECT_FALSE(queueNamed("Recorder").isDefault);
}

TEST_F(Queues, HaveTheDefaultThatTheEnvironmentNames) {
    keepOptions("Default Second\n");
    ::setenv("LPDEST", "Recorder", 1);
    EXPECT_TRUE(queueNamed("Recorder").isDefault);
    EXPECT_FALSE(queueNamed("Second").isDefault);
}

TEST_F(Queues, OfAServerThatIsNotThereAreAnError) {
    const std::string nowhere = folder_.path() / "no-socket";
    EXPECT_THAT(listQueues(nowhere).error, HasSubstr("No connection"));
    EXPECT_THAT(fetchPpd({nowhere, kQueue}).error, HasSubstr("No connection"));
}

TEST_F(Queues, PpdComesFromTheirServer) {
    for (const std::string& address : {server().socket(), server().hostAndPort()}) {
        SCOPED_TRACE(address);
        const FetchedPpd ppd = fetchPpd({address, kQueue});
        EXPECT_EQ(ppd.error, "");
        EXPECT_THAT(ppd.text, HasSubstr("*ModelName: \"Recorder\""));
    }
}

TEST_F(Queues, PpdOfAQueueThatDoesNotExistIsAnError) {
    EXPECT_THAT(fetchPpd({server().socket(), "Nobody"}).error, HasSubstr("does not exist"));
    EXPECT_THAT(fetchPpd({server().socket(), "../etc"}).error, HasSubstr("no queue"));
    EXPECT_THAT(fetchPpd({server().socket(), ""}).error, HasSubstr("No queue was named"));
}

TEST_F(Queues, OfAServerThatAnswersNothingAreAnErrorInTime) {
    server().freeze();
    const auto start = std::chrono::steady_clock::now();
    const std::string listError = listQueues(server().socket(), kShort).error;
    const std::string ppdError = fetchPpd({server().socket(), kQueue}, kShort).error;
    const auto passed = std::chrono::steady_clock::now() - start;
    server().thaw();
    EXPECT_THAT(listError, HasSubstr("no sign of life"));
    EXPECT_THAT(ppdError, HasSubstr("no sign of life"));
    EXPECT_LT(passed, std::chrono::seconds(5)); // two waits of half a second
}

TEST_F(Queues, SeveralDocumentsAreOneJob) {
    JobRequest job = request();
    const JobResult result =
        submitDocumentsToQueue(queue(), job, {folder_.write("one.txt", "one\n"), folder_.write("two.txt", "two\n")});
    EXPECT_EQ(result.error, "");
    ASSERT_NE(result.jobId, 0);
    EXPECT_TRUE(server().waitForRecord(result.jobId));
    EXPECT_EQ(server().jobStates().rbegin()->first, result.jobId);
}

TEST_F(Queues, NoDocumentIsNoJob) {
    const std::size_t before = server().jobStates().size();
    EXPECT_THAT(submitDocumentsToQueue(queue(), request(), {}).error, HasSubstr("no document"));
    EXPECT_EQ(server().jobStates().size(), before);
}

TEST_F(Queues, HeldJobIsReleasedByAChange) {
    JobRequest job = request();
    job.holdUntil = "indefinite";
    const JobResult held = submitToQueue(queue(), job);
    ASSERT_TRUE(held.ok) << held.error;
    EXPECT_EQ(changeJob(server().socket(), {.job = kQueue + "-" + std::to_string(held.jobId),
                                            .title = "Released",
                                            .copies = 2,
                                            .holdUntil = "no-hold",
                                            .options = {{"InkMedia", "Glossy"}}}),
              "");
    const auto record = server().waitForRecord(held.jobId);
    ASSERT_TRUE(record) << server().errorLog();
    EXPECT_EQ(record->title, "Released");
    EXPECT_EQ(record->copies, "2");
    EXPECT_EQ(record->options.at("InkMedia"), "Glossy");
}

TEST_F(Queues, ChangeOfAJobThatCannotBeChangedIsAnError) {
    const std::string socket = server().socket();
    EXPECT_THAT(changeJob(socket, {.job = "Recorder-99999", .priority = 3}), HasSubstr("could not be changed"));
    EXPECT_THAT(changeJob(socket, {.job = "99999", .restarts = true}), HasSubstr("could not be printed again"));
    EXPECT_THAT(changeJob(socket, {.job = "Recorder", .priority = 3}), HasSubstr("There can be no job"));
    EXPECT_THAT(changeJob(socket, {.job = "1"}), HasSubstr("say what"));
    EXPECT_THAT(changeJob(socket, {.job = "1", .copies = 0}), HasSubstr("copies"));
    EXPECT_THAT(changeJob(socket, {.job = "1", .priority = 101}), HasSubstr("priority"));
}

} // namespace
} // namespace host
