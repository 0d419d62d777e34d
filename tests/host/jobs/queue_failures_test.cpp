#include "tests/host/jobs/plain_user.h"
#include "tests/host/jobs/queue_test.h"
#include "tests/support/fake_print_server.h"

#include <chrono>
#include <cups/cups.h>
#include <sys/stat.h>
#include <thread>
#include <utility>

namespace host {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;
using test_support::PrivateCupsd;
using testing::AllOf;
using testing::AnyOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr JobLimits kShortLimits{milliseconds(1000), milliseconds(700)};
constexpr auto kLongEnough = kShortLimits.response + seconds(2); // a failure is told no later than that

/// More than any socket holds, so that a server that reads no more is felt while the document is sent.
const std::string& largeContents() {
    static const std::string contents = test_support::variedBytes(12'000'000);
    return contents;
}

/// Queues that are there but take nothing, and requests that are wrong: one server for all.
class QueueRefusals : public QueueTest {
protected:
    ~QueueRefusals() override { EXPECT_LT(steady_clock::now() - start_, JobLimits().response + seconds(2)); }

    std::string errorFor(const QueueAddress& address) const {
        const JobResult result = submitToQueue(address, request());
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.jobId, 0);
        return result.error;
    }
    std::string errorForDocument(const std::string& path) const {
        const std::size_t before = server().jobStates().size();
        const JobResult result = submitToQueue(queue(), {.documentPath = path, .title = "Document"});
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(server().jobStates().size(), before);
        return result.error;
    }

private:
    const steady_clock::time_point start_ = steady_clock::now();
};

TEST_F(QueueRefusals, AnUnknownQueueIsNamed) {
    EXPECT_THAT(errorFor({server().socket(), "Missing"}),
                AllOf(HasSubstr("\"Missing\""), HasSubstr(server().socket()), HasSubstr("does not exist")));
}

TEST_F(QueueRefusals, ARejectingQueueIsNamed) {
    server().addQueue("Rejecting", kRecordingPpd);
    server().rejectJobs("Rejecting");
    EXPECT_THAT(errorFor({server().socket(), "Rejecting"}),
                AllOf(HasSubstr("\"Rejecting\""), HasSubstr("accepts no jobs")));
}

TEST_F(QueueRefusals, NamesThatNoQueueCanHaveAreRefused) {
    for (const std::string& name :
         {std::string("a/b"), std::string("../admin"), std::string("a?b"), std::string("a#b"), std::string("a b"),
          std::string("a\nb"), std::string("caf\xE9"), std::string(128, 'q')}) {
        SCOPED_TRACE(name);
        EXPECT_THAT(errorFor({server().socket(), name}), HasSubstr("no queue"));
    }
    EXPECT_THAT(errorFor({server().socket(), ""}), HasSubstr("No queue was named"));
}

TEST_F(QueueRefusals, AddressesThatNoServerCanHaveAreRefused) {
    for (const std::string& name : {std::string("host:0"), std::string("host:65536"), std::string("host:http"),
                                    std::string("host:"), std::string(":631"), std::string("a/b"), std::string("[::1"),
                                    std::string("[::1]x"), std::string("a\nb"), "/" + std::string(200, 's')}) {
        SCOPED_TRACE(name);
        EXPECT_THAT(errorFor({name, kQueue}), HasSubstr("no print server"));
    }
}

TEST_F(QueueRefusals, AMissingSocketIsSaidToBeUnreachable) {
    EXPECT_THAT(errorFor({folder_.path() / "socket", kQueue}),
                AllOf(HasSubstr("No connection"), HasSubstr("No such file")));
}

TEST_F(QueueRefusals, AddressesInEachFormAreTried) {
    for (const std::string address : {"127.0.0.1:1", "[::1]:1", "localhost:1"}) { // where no server is
        SCOPED_TRACE(address);
        EXPECT_THAT(errorFor({address, kQueue}), AllOf(HasSubstr("No connection"), HasSubstr(address)));
    }
}

TEST_F(QueueRefusals, AMissingDocumentIsNamed) {
    EXPECT_THAT(errorForDocument(folder_.path() / "missing.pdf"),
                AllOf(HasSubstr("missing.pdf"), HasSubstr("No such file")));
    EXPECT_THAT(errorForDocument(""), HasSubstr("No document"));
}

TEST_F(QueueRefusals, ADocumentThatAPlainUserMayNotReadIsNamed) {
    const std::string path = folder_.write("private.pdf", "x");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    EXPECT_THAT(test_support::asPlainUser([&] { return errorForDocument(path); }),
                AllOf(HasSubstr("private.pdf"), HasSubstr("Permission denied")));
}

TEST_F(QueueRefusals, ADocumentThatVanishesWhileItIsSentArrivesWhole) {
    const JobRequest job = request(largeContents());
    const JobResult result = submitToQueue(queue(), job, {}, [&job](std::uint64_t, std::uint64_t) {
        std::filesystem::remove(job.documentPath);
        return true;
    });
    ASSERT_TRUE(result.ok) << result.error;
    const auto record = server().waitForRecord(result.jobId);
    ASSERT_TRUE(record) << server().errorLog();
    EXPECT_TRUE(record->data == largeContents());
}

TEST_F(QueueRefusals, AQueueThatIsDeletedWhileTheDocumentIsSentIsNoSuccess) {
    server().addQueue("Short-lived", kRecordingPpd);
    bool isDeleted = false;
    const JobResult result =
        submitToQueue({server().socket(), "Short-lived"}, request(largeContents()), {}, [&](std::uint64_t sent, auto) {
            if (sent > 0 && !std::exchange(isDeleted, true))
                server().deleteQueue("Short-lived");
            return true;
        });
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.error, HasSubstr("\"Short-lived\""));
    for (const auto& [jobId, state] : server().jobStates())
        EXPECT_THAT(state, AnyOf("completed", "canceled", "aborted")) << jobId;
}

TEST_F(QueueRefusals, AFolderIsNoDocument) {
    EXPECT_THAT(errorForDocument(folder_.path()), HasSubstr("folder"));
}

TEST_F(QueueRefusals, AnEmptyDocumentIsRefused) {
    EXPECT_THAT(errorForDocument(folder_.write("empty.pdf", "")), AllOf(HasSubstr("empty.pdf"), HasSubstr("is empty")));
}

TEST_F(QueueRefusals, AFifoIsRefusedAtOnce) {
    const std::string fifo = folder_.path() / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_THAT(errorForDocument(fifo), HasSubstr("not a regular file"));
}

TEST_F(QueueRefusals, ADeviceIsRefused) {
    EXPECT_THAT(errorForDocument("/dev/zero"), HasSubstr("not a regular file"));
}

TEST_F(QueueRefusals, AGivenUpJobIsCancelled) {
    const JobResult result = submitToQueue(queue(), request(largeContents()), {},
                                           [](std::uint64_t sent, std::uint64_t) { return sent < 1'000'000; });
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.jobId, 0);
    EXPECT_THAT(result.error, HasSubstr("given up"));
    EXPECT_EQ(server().jobStates().rbegin()->second, "canceled");
}

TEST_F(QueueRefusals, ADocumentThatShrinksIsNotPrinted) {
    const JobRequest job = request(largeContents());
    const JobResult result = submitToQueue(queue(), job, {}, [&job](std::uint64_t, std::uint64_t) {
        std::filesystem::resize_file(job.documentPath, 100'000);
        return true;
    });
    EXPECT_THAT(result.error, HasSubstr("changed while it was read"));
    EXPECT_EQ(server().jobStates().rbegin()->second, "canceled");
}

TEST_F(QueueRefusals, ADocumentFormatThatTheServerLacksIsNamed) {
    JobRequest job = request();
    job.options = {{"document-format", "application/x-unheard-of"}};
    const JobResult result = submitToQueue(queue(), job);
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.error, HasSubstr("kind of document"));
    EXPECT_EQ(server().jobStates().rbegin()->second, "canceled");
}

enum class Road { Socket, Port };

/// Servers that break or stop: each test has its own, and meets it on each road.
class QueueFailures : public testing::TestWithParam<Road> {
protected:
    QueueFailures() { server_.addQueue(kQueue, kRecordingPpd); }

    QueueAddress queue() const {
        return {GetParam() == Road::Socket ? server_.socket() : server_.hostAndPort(), kQueue};
    }

    JobRequest request(std::string_view contents = "a page\n") const {
        return {.documentPath = folder_.write("page.txt", contents), .title = "Page"};
    }

    /// Submits under the short limits, in bounded time.
    JobResult submit(const JobRequest& request, const JobProgress& progress = {}) const {
        const auto start = steady_clock::now();
        const JobResult result = submitToQueue(queue(), request, kShortLimits, progress);
        EXPECT_LT(steady_clock::now() - start, kLongEnough);
        EXPECT_FALSE(result.ok);
        return result;
    }

    void freezeOnce() {
        if (!std::exchange(isFrozen_, true))
            server_.freeze();
    }

    PrivateCupsd server_;
    const test_support::ScratchFolder folder_;
    bool isFrozen_ = false;
};

TEST_P(QueueFailures, ADeadServerIsUnreachable) {
    server_.kill();
    EXPECT_THAT(submit(request()).error,
                AllOf(HasSubstr("No connection"), HasSubstr(queue().server), HasSubstr("Connection refused")));
}

TEST_P(QueueFailures, AFrozenServerEndsInItsTime) {
    server_.freeze();
    const JobResult result = submit(request());
    EXPECT_THAT(result.error, HasSubstr("no sign of life for 700 ms"));
    EXPECT_EQ(result.jobId, 0);
}

TEST_P(QueueFailures, AServerThatFreezesDuringTheDocumentEndsInItsTime) {
    const JobResult result = submit(request(largeContents()), [this](std::uint64_t sent, std::uint64_t) {
        if (sent > 0)
            freezeOnce();
        return true;
    });
    EXPECT_THAT(result.error, AllOf(HasSubstr("no sign of life"), HasSubstr("while the document was sent"),
                                    HasSubstr("may still stand in the queue")));
    EXPECT_EQ(result.jobId, 1);
}

TEST_P(QueueFailures, AServerThatFreezesAfterTheDocumentIsNoSuccess) {
    const JobResult result = submit(request(), [this](std::uint64_t sent, std::uint64_t all) {
        if (sent == all)
            freezeOnce();
        return true;
    });
    EXPECT_THAT(result.error, AllOf(HasSubstr("no sign of life"), HasSubstr("after the document was sent"),
                                    HasSubstr("may still stand in the queue")));
    EXPECT_EQ(result.jobId, 1);
}

TEST_P(QueueFailures, TheRemovalOfAFrozenServersJobTakesNoTimeOutOfItsOwn) {
    constexpr JobLimits kLimits{.response = milliseconds(2500)};
    const auto start = steady_clock::now();
    const JobResult result = submitToQueue(queue(), request(), kLimits, [this](std::uint64_t sent, std::uint64_t all) {
        if (sent == all)
            freezeOnce();
        return true;
    });
    EXPECT_LT(steady_clock::now() - start, kLimits.response + seconds(2));
    EXPECT_THAT(result.error, HasSubstr("no sign of life for 2500 ms"));
}

TEST_P(QueueFailures, AFrozenServersJobIsGivenUpAtOnce) {
    const auto start = steady_clock::now();
    const JobResult result = submitToQueue(queue(), request(), {.response = seconds(60)},
                                           [this, &start](std::uint64_t sent, std::uint64_t all) {
                                               if (sent == all)
                                                   freezeOnce();
                                               return !isFrozen_ || steady_clock::now() - start < milliseconds(500);
                                           });
    EXPECT_LT(steady_clock::now() - start, seconds(5));
    EXPECT_THAT(result.error, AllOf(HasSubstr("given up"), HasSubstr("may still stand in the queue")));
}

TEST_P(QueueFailures, AServerKilledDuringTheDocumentIsNoSuccess) {
    const JobResult result = submit(request(largeContents()), [this](std::uint64_t, std::uint64_t) {
        server_.kill();
        return true;
    });
    EXPECT_THAT(result.error, AllOf(HasSubstr("broke while the document was sent"), HasSubstr("may still stand")));
}

TEST_P(QueueFailures, AServerKilledAfterTheDocumentIsNoSuccess) {
    const JobResult result = submit(request(), [this](std::uint64_t, std::uint64_t) {
        server_.kill();
        return true;
    });
    EXPECT_THAT(result.error, AllOf(HasSubstr("broke after the document was sent"), HasSubstr("may still stand")));
}

TEST_P(QueueFailures, AServerThatGoesOnInTimeIsASuccess) {
    std::thread thawing;
    const JobResult result = submitToQueue(queue(), request(), {}, [this, &thawing](std::uint64_t, std::uint64_t) {
        if (!thawing.joinable()) {
            server_.freeze();
            thawing = std::thread([this] { server_.thaw(); });
        }
        return true;
    });
    thawing.join();
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_TRUE(server_.waitForRecord(result.jobId));
}

INSTANTIATE_TEST_SUITE_P(Roads, QueueFailures, testing::Values(Road::Socket, Road::Port),
                         [](const auto& info) { return std::string(info.param == Road::Socket ? "Socket" : "Port"); });

TEST(QueueLimits, ADocumentOverTheServersLimitIsSaidToBeTooLarge) {
    PrivateCupsd server({.configuration = "MaxRequestSize 200k\n"});
    server.addQueue(kQueue, kRecordingPpd);
    const test_support::ScratchFolder folder;
    const JobRequest job{.documentPath = folder.write("page.txt", largeContents()), .title = "Page"};
    for (const std::string& address : {server.socket(), server.hostAndPort()}) {
        const JobResult result = submitToQueue({address, kQueue}, job);
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.error, HasSubstr("takes no document as large"));
    }
    for (const auto& [jobId, state] : server.jobStates())
        EXPECT_THAT(state, AnyOf("canceled", "aborted")) << jobId;
}

/// What a server does at one step, and how the failure is told.
struct Breakdown {
    int operation;
    test_support::Reply reply;
    const char* told;
    bool leavesJob; ///< the job may still stand: then the failure bears its number
};

constexpr Breakdown kBreakdowns[] = {
    // step                     what the server does             what is told                           job left
    {IPP_OP_CREATE_JOB, test_support::Reply::HangUp, "broke when the job was announced", false},
    {IPP_OP_CREATE_JOB, test_support::Reply::Die, "broke when the job was announced", false},
    {IPP_OP_CREATE_JOB, test_support::Reply::CutAnswer, "broke when the job was announced", false},
    {IPP_OP_CREATE_JOB, test_support::Reply::WebPage, "when the job was announced", false},
    {IPP_OP_CREATE_JOB, test_support::Reply::Silence, "no sign of life for 700 ms when the job was announced", false},
    {IPP_OP_SEND_DOCUMENT, test_support::Reply::HangUpAtOnce, "broke while the document was sent", false},
    {IPP_OP_SEND_DOCUMENT, test_support::Reply::HangUp, "broke after the document was sent", false},
    {IPP_OP_SEND_DOCUMENT, test_support::Reply::Die, "broke after the document was sent", true},
    {IPP_OP_SEND_DOCUMENT, test_support::Reply::CutAnswer, "broke after the document was sent", false},
    {IPP_OP_SEND_DOCUMENT, test_support::Reply::WebPage, "after the document was sent", false},
    {IPP_OP_SEND_DOCUMENT, test_support::Reply::Silence, "no sign of life for 700 ms after the document", false},
    {IPP_OP_GET_JOB_ATTRIBUTES, test_support::Reply::HangUp, "broke before it confirmed the job", true},
    {IPP_OP_GET_JOB_ATTRIBUTES, test_support::Reply::Die, "broke before it confirmed the job", true},
    {IPP_OP_GET_JOB_ATTRIBUTES, test_support::Reply::CutAnswer, "broke before it confirmed the job", true},
    {IPP_OP_GET_JOB_ATTRIBUTES, test_support::Reply::Silence, "no sign of life for 700 ms before", true},
};

TEST(QueueBreakdowns, EachIsToldInTimeAndLeavesNoJobUnsaid) {
    const test_support::ScratchFolder folder;
    const JobRequest job{.documentPath = folder.write("page.txt", largeContents()), .title = "Page"};
    for (const auto& [operation, reply, told, leavesJob] : kBreakdowns) {
        SCOPED_TRACE(std::string(ippOpString(static_cast<ipp_op_t>(operation))) + ": " + told);
        const test_support::FakePrintServer server({{operation, reply}});
        const auto start = steady_clock::now();
        const JobResult result = submitToQueue({server.hostAndPort(), kQueue}, job, kShortLimits);
        EXPECT_LT(steady_clock::now() - start, kLongEnough);
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.error, AllOf(HasSubstr(told), HasSubstr(server.hostAndPort()), Not(HasSubstr("\n")),
                                        Not(HasSubstr("uccess"))));
        EXPECT_EQ(result.jobId != 0, leavesJob);
        if (leavesJob) {
            EXPECT_THAT(result.error, HasSubstr("may still stand in the queue"));
        } else if (operation == IPP_OP_SEND_DOCUMENT) {
            EXPECT_THAT(server.asked(), Contains(IPP_OP_CANCEL_JOB));
        }
        EXPECT_THAT(server.asked(), Contains(IPP_OP_CREATE_JOB).Times(1)); // twice would be two jobs
    }
}

TEST(QueueBreakdowns, AServerThatAnswersGetsAllBytes) {
    const test_support::ScratchFolder folder;
    const test_support::FakePrintServer server({});
    const JobResult result = submitToQueue({server.hostAndPort(), kQueue},
                                           {.documentPath = folder.write("page.txt", largeContents())}, kShortLimits);
    EXPECT_TRUE(result.ok) << result.error;
    EXPECT_EQ(server.documentBytes(), largeContents().size());
}

TEST(QueueLimits, AServerThatWantsAPasswordIsNotAskedOnTheTerminal) {
    PrivateCupsd server({.configuration = "<Policy locked>\n<Limit All>\nAuthType Basic\nRequire user nobody\n"
                                          "Order deny,allow\nAllow all\n</Limit>\n</Policy>\n"
                                          "<Location /printers>\nAuthType Basic\nRequire valid-user\n</Location>\n"});
    server.addQueue(kQueue, kRecordingPpd);
    const test_support::ScratchFolder folder;
    const JobResult result =
        submitToQueue({server.hostAndPort(), kQueue}, {.documentPath = folder.write("page.txt", "x"), .title = "Page"});
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.error, HasSubstr("password"));
    EXPECT_TRUE(server.jobStates().empty());
}

} // namespace
} // namespace host
