#include "host/command_line/command_line.h"
#include "host/jobs/job_status.h"
#include "tests/host/command_line/print_command.h"
#include "tests/support/private_cupsd.h"

#include <array>
#include <charconv>
#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>
#include <unistd.h>

namespace host {
namespace {

constexpr std::size_t kPieceBytes = 1'000'003; // no multiple of any buffer's size
constexpr int kPieces = 200;
constexpr long kConstant = 4'000'000; // bytes by which the peak may vary from run to run
constexpr auto kDeadline = std::chrono::seconds(120);

/// The nth piece of a large document: none is like another.
std::string piece(int number) {
    static const std::string bytes = test_support::variedBytes(kPieceBytes - sizeof number);
    return std::string(reinterpret_cast<const char*>(&number), sizeof number) + bytes;
}

void writePieces(int descriptor, int count) {
    std::signal(SIGPIPE, SIG_IGN); // a reader that ends early fails the test by its status
    for (int number = 0; number < count; ++number) {
        const std::string bytes = piece(number);
        for (std::size_t written = 0; written < bytes.size();) {
            const ssize_t now = ::write(descriptor, bytes.data() + written, bytes.size() - written);
            if (now <= 0)
                return;
            written += static_cast<std::size_t>(now);
        }
    }
}

class LargeInput : public PrintCommandTest {
protected:
    LargeInput() { server_.addQueue("Sample", kSamplePpd); }

    /// Prints so many pieces from a pipe.
    test_support::ProgramResult print(int pieces) const {
        auto environment = environment_;
        environment["CUPS_SERVER"] = server_.socket();
        return test_support::runProgram({.program = PRINT_PROGRAM,
                                         .arguments = {"lp", "-d", "Sample"},
                                         .environment = environment,
                                         .writeInput = [pieces](int descriptor) { writePieces(descriptor, pieces); }});
    }
    /// Waits until the job was printed; what reached the printer.
    std::filesystem::path printedFile(int job) const {
        const auto end = std::chrono::steady_clock::now() + kDeadline;
        while (jobStatus(server_.socket(), job).stage != JobStage::Printed && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return server_.recordFolder() / ("job-" + std::to_string(job) + ".printed");
    }

    test_support::PrivateCupsd server_;
};

TEST_F(LargeInput, ArrivesWholeAndTakesNoMoreMemoryThanAPage) {
    const auto page = print(1);
    ASSERT_EQ(page.status, kExitDone) << page.errors;
    const auto large = print(kPieces);
    ASSERT_EQ(large.status, kExitDone) << large.errors;
    RecordProperty("PeakMemoryOfAPage", std::to_string(page.peakMemory));
    RecordProperty("PeakMemoryOfAllPieces", std::to_string(large.peakMemory));
    EXPECT_LT(large.peakMemory, page.peakMemory + kConstant);

    const std::filesystem::path printed = printedFile(2);
    ASSERT_TRUE(std::filesystem::exists(printed)) << server_.errorLog();
    ASSERT_EQ(std::filesystem::file_size(printed), kPieceBytes * kPieces);
    std::ifstream stream(printed, std::ios::binary);
    for (int number = 0; number < kPieces; ++number) {
        std::string arrived(kPieceBytes, '\0');
        stream.read(arrived.data(), static_cast<std::streamsize>(arrived.size()));
        ASSERT_TRUE(arrived == piece(number)) << "piece " << number;
    }
}

} // namespace
} // namespace host
