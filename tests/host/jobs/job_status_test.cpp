#include "host/jobs/job_changes.h"
#include "host/jobs/job_status.h"
#include "tests/host/jobs/queue_test.h"

#include <chrono>
#include <thread>

namespace host {
namespace {

using test_support::Printer;
using testing::AllOf;
using testing::HasSubstr;

constexpr auto kDeadline = std::chrono::seconds(30);
constexpr auto kInterval = std::chrono::milliseconds(20);

/// Jobs after they were sent, on printers that misbehave.
class JobStatuses : public QueueTest {
protected:
    /// Sends a page to a new queue of such a printer; the job's number.
    int sent(const std::string& name, const Printer& printer, const PasswordPrompt& prompt = {}) {
        server().addQueue(name, kRecordingPpd, printer);
        result_ = submitToQueue({server().socket(), name}, request(), {}, {}, prompt);
        EXPECT_TRUE(result_.ok) << result_.error;
        return result_.jobId;
    }
    static std::string credentialsOf(int job) {
        return test_support::contentsOf(server().recordFolder() / ("job-" + std::to_string(job) + ".credentials"));
    }
    /// Asks until the words hold this text; the last answer.
    static JobStatus statusThatSays(int job, const std::string& text) {
        const auto end = std::chrono::steady_clock::now() + kDeadline;
        for (;;) {
            JobStatus status = jobStatus(server().socket(), job);
            if (status.words.find(text) != std::string::npos || std::chrono::steady_clock::now() > end) {
                EXPECT_THAT(status.words, HasSubstr(text)) << status.error << server().errorLog();
                return status;
            }
            std::this_thread::sleep_for(kInterval);
        }
    }

    JobResult result_;
};

TEST_F(JobStatuses, APrintedJobIsOver) {
    const JobStatus status = statusThatSays(sent("Good", {}), "was printed");
    EXPECT_EQ(status.stage, JobStage::Printed);
    EXPECT_TRUE(status.isOver());
}

TEST_F(JobStatuses, APrintingJobIsNotOver) {
    const int job = sent("Slow", {.waits = true});
    const JobStatus status = statusThatSays(job, "is printing");
    EXPECT_EQ(status.stage, JobStage::Printing);
    EXPECT_FALSE(status.isOver());
    EXPECT_FALSE(status.isHindered);
    server().letPrint();
    statusThatSays(job, "was printed");
}

TEST_F(JobStatuses, APrinterOutOfPaperIsSaidToBeSo) {
    const int job = sent("Empty", {.reason = "media-empty-error", .waits = true});
    const JobStatus status = statusThatSays(job, "out of paper");
    EXPECT_EQ(status.words, "The job waits because the printer is out of paper.");
    EXPECT_TRUE(status.isHindered);
    server().letPrint();
    statusThatSays(job, "was printed");
}

TEST_F(JobStatuses, AReportIsNoHindrance) {
    const int job = sent("Reporting", {.reason = "media-empty-report", .waits = true});
    EXPECT_FALSE(statusThatSays(job, "is printing").isHindered);
    server().letPrint();
    statusThatSays(job, "was printed");
}

TEST_F(JobStatuses, APrinterThatStopsItsQueueKeepsTheJob) {
    const JobStatus status =
        statusThatSays(sent("Stopping", {.backendStatus = 4, .reason = "media-jam-error"}), "is paused");
    EXPECT_THAT(status.words, HasSubstr("jammed"));
    EXPECT_EQ(status.stage, JobStage::Waiting);
    EXPECT_TRUE(status.isHindered);
}

TEST_F(JobStatuses, APrinterThatHoldsItsJobIsSaidToDoSo) {
    const JobStatus status = statusThatSays(sent("Holding", {.backendStatus = 3}), "is held");
    EXPECT_EQ(status.stage, JobStage::Held);
    EXPECT_FALSE(status.wantsPassword);
    EXPECT_FALSE(status.isOver());
}

TEST_F(JobStatuses, AFilterThatFailsIsSaidToHaveFailed) {
    const JobStatus status = statusThatSays(sent("Failing", {.filterStatus = 1}), "is stopped (Filter failed)");
    EXPECT_EQ(status.stage, JobStage::Stopped);
    EXPECT_TRUE(status.isHindered);
}

TEST_F(JobStatuses, APausedQueueIsSaidToBePaused) {
    server().addQueue("Paused", kRecordingPpd);
    server().pauseQueue("Paused");
    const JobResult result = submitToQueue({server().socket(), "Paused"}, request());
    EXPECT_EQ(statusThatSays(result.jobId, "is paused").stage, JobStage::Waiting);
}

TEST_F(JobStatuses, AHeldJobSaysUntilWhen) {
    JobRequest job = request();
    job.holdUntil = "indefinite";
    EXPECT_THAT(statusThatSays(submitToQueue(queue(), job).jobId, "is held").words, HasSubstr("released"));
    job.holdUntil = "night";
    EXPECT_THAT(statusThatSays(submitToQueue(queue(), job).jobId, "is held").words, HasSubstr("\"night\""));
}

TEST_F(JobStatuses, ACancelledJobIsOver) {
    const int job = sent("Cancelled", {.waits = true});
    EXPECT_EQ(cancelJob(server().socket(), "Cancelled-" + std::to_string(job)), "");
    EXPECT_EQ(statusThatSays(job, "was cancelled").stage, JobStage::Cancelled);
    EXPECT_THAT(cancelJob(server().socket(), std::to_string(job)), HasSubstr("could not be cancelled"));
    EXPECT_THAT(cancelJob(server().socket(), "none"), HasSubstr("There can be no job"));
}

TEST_F(JobStatuses, AnUnknownJobIsOverAndSaidToBeUnknown) {
    const JobStatus status = jobStatus(server().socket(), 999'999);
    EXPECT_EQ(status.error, "");
    EXPECT_TRUE(status.isOver());
    EXPECT_THAT(status.words, AllOf(HasSubstr("999999"), HasSubstr("not known")));
}

TEST_F(JobStatuses, WithoutAServerNothingIsLearnt) {
    EXPECT_THAT(jobStatus(folder_.path() / "socket", 1).error, HasSubstr("No connection"));
    EXPECT_THAT(jobStatus("a b", 1).error, HasSubstr("no print server"));
}

TEST_F(JobStatuses, AJobThatWantsAPasswordSaysSoAndIsReleasedByOne) {
    const int job = sent("Guarded", {.backendStatus = 2});
    const JobStatus status = statusThatSays(job, "password");
    EXPECT_TRUE(status.wantsPassword);
    EXPECT_EQ(status.stage, JobStage::Held);
    EXPECT_EQ(authenticateJob(server().socket(), std::to_string(job), {"ann", "a word"}), "");
    statusThatSays(job, "was printed");
    EXPECT_EQ(credentialsOf(job), "ann:a word");
}

TEST_F(JobStatuses, APrintersPasswordIsAskedForBeforeTheJobIsSent) {
    int asked = 0;
    const int job =
        sent("Asking", {.backendStatus = 2, .wantsCredentials = true}, [&](const PasswordQuestion& question) {
            ++asked;
            EXPECT_THAT(question.server, HasSubstr("\"Asking\""));
            return std::optional(Credentials{"ann", "a word"});
        });
    EXPECT_EQ(asked, 1);
    statusThatSays(job, "was printed");
    EXPECT_EQ(credentialsOf(job), "ann:a word");
}

TEST_F(JobStatuses, WithoutThePrintersPasswordNothingIsSent) {
    server().addQueue("Unanswered", kRecordingPpd, {.wantsCredentials = true});
    const std::size_t before = server().jobStates().size();
    const JobResult result = submitToQueue({server().socket(), "Unanswered"}, request(), {}, {},
                                           [](const PasswordQuestion&) { return std::nullopt; });
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.error, AllOf(HasSubstr("\"Unanswered\""), HasSubstr("password")));
    EXPECT_EQ(server().jobStates().size(), before);
}

} // namespace
} // namespace host
