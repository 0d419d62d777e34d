#pragma once

#include "host/jobs/queue_submission.h"
#include "tests/support/private_cupsd.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

namespace host {

inline const std::string kQueue = "Recorder";
inline const std::string kRecordingPpd = CV_SOURCE_DIR "/tests/support/recording.ppd";

/// The keys that a server adds to a job's options on its own.
inline constexpr const char* kServersOwnKeys[] = {
    "date-time-at-creation",
    "date-time-at-processing",
    "document-name-supplied",
    "finishings",
    "job-originating-host-name",
    "job-uuid",
    "number-up",
    "print-color-mode",
    "time-at-creation",
    "time-at-processing",
};

inline std::map<std::string, std::string> withoutServersOwn(std::map<std::string, std::string> options) {
    for (const char* key : kServersOwnKeys)
        options.erase(key);
    return options;
}

/// One private server with one queue for all tests of a suite, and a folder for each test.
class QueueTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        server_ = std::make_unique<test_support::PrivateCupsd>();
        server_->addQueue(kQueue, kRecordingPpd);
    }
    static void TearDownTestSuite() { server_.reset(); }

    static test_support::PrivateCupsd& server() { return *server_; }
    static QueueAddress queue() { return {server().socket(), kQueue}; }

    JobRequest request(std::string_view contents = "a page\n") const {
        return {.documentPath = folder_.write("page.txt", contents), .title = "Page"};
    }

    /// Sends the request and reads what the filter was given; the test fails where either does not happen.
    static test_support::JobRecord printed(const JobRequest& request, const QueueAddress& address = queue()) {
        const JobResult result = submitToQueue(address, request);
        EXPECT_TRUE(result.ok) << result.error;
        if (!result.ok)
            return {};
        const auto record = server().waitForRecord(result.jobId);
        EXPECT_TRUE(record) << "job " << result.jobId << " was not recorded\n" << server().errorLog();
        return record.value_or(test_support::JobRecord{});
    }

    const test_support::ScratchFolder folder_;

private:
    inline static std::unique_ptr<test_support::PrivateCupsd> server_;
};

} // namespace host
