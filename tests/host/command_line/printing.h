#pragma once

#include "host/command_line/command_line.h"
#include "tests/host/command_line/print_command.h"
#include "tests/support/private_cupsd.h"

#include <charconv>
#include <fstream>
#include <memory>

namespace host {

inline constexpr const char* kForeignPpd = CV_SOURCE_DIR "/tests/support/recording.ppd";

/// The print command and a server with a queue of a sample printer and one of another make.
class Printing : public PrintCommandTest {
protected:
    static void SetUpTestSuite() {
        server_ = std::make_unique<test_support::PrivateCupsd>();
        server_->addQueue("Sample", kSamplePpd);
        server_->addQueue("Foreign", kForeignPpd);
    }
    static void TearDownTestSuite() { server_.reset(); }

    Printing() { environment_["CUPS_SERVER"] = server().socket(); }

    static test_support::PrivateCupsd& server() { return *server_; }

    void keepOptions(const std::string& lines) const {
        std::filesystem::create_directory(folder_.path() / ".cups");
        std::ofstream(folder_.path() / ".cups" / "lpoptions") << lines;
    }
    /// What reached the filter of the job that the command printed; the test fails where it printed none.
    test_support::JobRecord printed(std::vector<std::string> arguments, const std::string& input = "a page\n") const {
        const auto result = run(std::move(arguments), input);
        EXPECT_EQ(result.status, kExitDone) << result.errors;
        const auto record = server().waitForRecord(jobOf(result.output));
        EXPECT_TRUE(record) << result.output << result.errors << server().errorLog();
        return record.value_or(test_support::JobRecord());
    }
    /// The number in "request id is QUEUE-N (K file(s))"; 0 where there is none.
    static int jobOf(const std::string& output) {
        int job = 0;
        const std::size_t end = output.find(" (");
        const std::size_t dash = output.rfind('-', end);
        if (dash != std::string::npos && end != std::string::npos)
            std::from_chars(output.data() + dash + 1, output.data() + end, job);
        return job;
    }
    std::string page(const std::string& name = "page.txt") const { return folder_.write(name, "a page\n"); }

private:
    inline static std::unique_ptr<test_support::PrivateCupsd> server_;
};

} // namespace host
