#include "host/jobs/job_changes.h"
#include "host/jobs/job_status.h"
#include "host/jobs/queues.h"
#include "tests/host/jobs/plain_user.h"
#include "tests/host/jobs/queue_test.h"
#include "tests/support/fake_print_server.h"

#include <cups/cups.h>

namespace host {
namespace {

using test_support::FakePrintServer;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kWanted = "wants a user's name and password";

/// A server that answers nobody but "ann", and a user who is asked.
class Passwords : public testing::Test {
protected:
    /// Answers with these passwords, in order; with none left it gives up.
    PasswordPrompt answering(std::vector<std::string> passwords) {
        return [this, passwords](const PasswordQuestion& question) -> std::optional<Credentials> {
            questions_.push_back(question);
            if (questions_.size() > passwords.size())
                return std::nullopt;
            return Credentials{"ann", passwords[questions_.size() - 1]};
        };
    }
    JobResult submit(const PasswordPrompt& prompt) const {
        return submitToQueue({server_.hostAndPort(), kQueue}, {.documentPath = folder_.write("page.txt", contents_)},
                             {}, {}, prompt);
    }

    const FakePrintServer server_{{}, "ann:right word"};
    const test_support::ScratchFolder folder_;
    const std::string contents_ = test_support::variedBytes(1'000'000);
    std::vector<PasswordQuestion> questions_;
};

TEST_F(Passwords, TheRightOneIsAskedForOnceAndTheJobIsSent) {
    const JobResult result = submit(answering({"right word"}));
    EXPECT_TRUE(result.ok) << result.error;
    ASSERT_EQ(questions_.size(), 1U);
    EXPECT_THAT(questions_[0].server, HasSubstr(server_.hostAndPort()));
    EXPECT_THAT(questions_[0].user, Not(IsEmpty()));
    EXPECT_FALSE(questions_[0].isAgain);
    EXPECT_EQ(server_.documentBytes(), contents_.size());
}

TEST_F(Passwords, AWrongOneIsAskedForAgain) {
    const JobResult result = submit(answering({"wrong", "right word"}));
    EXPECT_TRUE(result.ok) << result.error;
    ASSERT_EQ(questions_.size(), 2U);
    EXPECT_TRUE(questions_[1].isAgain);
}

TEST_F(Passwords, WrongOnesEndInWords) {
    const JobResult result = submit(answering(std::vector<std::string>(100, "wrong")));
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.error, HasSubstr("wants a user's name and password"));
    EXPECT_EQ(questions_.size(), 3U);
    EXPECT_THAT(server_.asked(), IsEmpty());
}

TEST_F(Passwords, WhoGivesUpOrIsNotThereIsTold) {
    for (const PasswordPrompt& prompt : {answering({}), PasswordPrompt()}) {
        const JobResult result = submit(prompt);
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.error, HasSubstr("wants a user's name and password"));
        EXPECT_EQ(result.jobId, 0);
    }
    EXPECT_EQ(questions_.size(), 1U);
    EXPECT_THAT(server_.asked(), IsEmpty());
}

TEST_F(Passwords, AGivenUpJobIsRemovedWithoutBeingAskedAgain) {
    const JobResult result = submitToQueue(
        {server_.hostAndPort(), kQueue}, {.documentPath = folder_.write("page.txt", contents_)}, {},
        [](std::uint64_t, std::uint64_t) { return false; }, answering({"right word"}));
    EXPECT_EQ(result.jobId, 0) << result.error;
    EXPECT_EQ(questions_.size(), 1U);
    EXPECT_THAT(server_.asked(), Contains(IPP_OP_CANCEL_JOB).Times(1));
}

TEST_F(Passwords, TheUserOfOneAnswerIsNotTheNextJobs) {
    const std::string before = cupsUser();
    ASSERT_TRUE(submit(answering({"right word"})).ok);
    EXPECT_EQ(cupsUser(), before);
}

TEST_F(Passwords, ChangesAndQuestionsAskToo) {
    EXPECT_THAT(cancelJob(server_.hostAndPort(), "7"), HasSubstr("could not be cancelled"));
    EXPECT_EQ(cancelJob(server_.hostAndPort(), "7", {}, answering({"right word"})), "");
    questions_.clear();
    EXPECT_EQ(jobStatus(server_.hostAndPort(), 7, {}, answering({"right word"})).error, "");
    EXPECT_THAT(jobStatus(server_.hostAndPort(), 7).error, HasSubstr("Nothing could be learnt"));
}

TEST_F(Passwords, QueuesAndPpdsAskToo) {
    const std::string server = server_.hostAndPort();
    EXPECT_THAT(listQueues(server).error, AllOf(HasSubstr("The queues"), HasSubstr(kWanted)));
    EXPECT_THAT(fetchPpd({server, kQueue}).error,
                AllOf(HasSubstr("PPD of the queue \"Recorder\""), HasSubstr(kWanted)));
    EXPECT_EQ(listQueues(server, {}, answering({"right word"})).error, "");
    ASSERT_EQ(questions_.size(), 1U);
    questions_.clear();
    const FetchedPpd ppd = fetchPpd({server, kQueue}, {}, answering({"wrong", "right word"}));
    EXPECT_EQ(ppd.error, "");
    EXPECT_THAT(ppd.text, HasSubstr("*PPD-Adobe"));
    ASSERT_EQ(questions_.size(), 2U);
    EXPECT_THAT(questions_[0].server, HasSubstr(server));
    EXPECT_TRUE(questions_[1].isAgain);
}

TEST_F(Passwords, WrongOnesForAPpdEndInWords) {
    const FetchedPpd ppd =
        fetchPpd({server_.hostAndPort(), kQueue}, {}, answering(std::vector<std::string>(100, "wrong")));
    EXPECT_THAT(ppd.error, HasSubstr(kWanted));
    EXPECT_EQ(questions_.size(), 3U);
}

/// A server that answers anybody but guards its queues.
class GuardedQueues : public testing::Test {
protected:
    GuardedQueues() { server_.addQueue(kQueue, kRecordingPpd); }

    test_support::PrivateCupsd server_{
        {.user = {}, .configuration = "<Location /printers>\n  AuthType Basic\n  Require valid-user\n</Location>\n"}};
    const test_support::ScratchFolder folder_;
};

TEST_F(GuardedQueues, AreOpenOverTheServersOwnSocket) {
    const std::string answer = test_support::asPlainUser([&] {
        const FetchedPpd ppd = fetchPpd({server_.socket(), kQueue});
        return ppd.error + (ppd.text.find("*ModelName: \"Recorder\"") == std::string::npos ? "no PPD" : "");
    });
    EXPECT_EQ(answer, "") << server_.errorLog();
    const JobResult result =
        submitToQueue({server_.socket(), kQueue}, {.documentPath = folder_.write("page.txt", "a page\n")});
    EXPECT_TRUE(result.ok) << result.error;
}

TEST_F(GuardedQueues, SayThatTheyWantAPassword) {
    EXPECT_THAT(fetchPpd({server_.hostAndPort(), kQueue}).error,
                AllOf(HasSubstr("PPD of the queue \"Recorder\""), HasSubstr(kWanted), HasSubstr("administrator")));
}

} // namespace
} // namespace host
