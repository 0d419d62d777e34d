#pragma once

#include "tests/support/scratch_folder.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace test_support {

/// What a queue's recording filter was given for one job.
struct JobRecord {
    std::string user;
    std::string title;
    std::string copies;
    std::string optionText;                     ///< the filter's fifth argument, as it stood
    std::map<std::string, std::string> options; ///< the same, as filters parse it
    std::string data;                           ///< the document's bytes
};

/// How the printer behind a queue behaves.
struct Printer {
    int filterStatus = 0; ///< the recording filter's exit status; with another one it records nothing
    int backendStatus =
        0; ///< the backend's: 0 printed, 1 failed, 2 wants a password, 3 hold the job, 4 stop the queue ...
    std::string reason{};          ///< a state reason that the printer tells, such as "media-empty-error"
    bool waits = false;            ///< it prints nothing before PrivateCupsd::letPrint()
    bool wantsCredentials = false; ///< the queue says that a name and a password are wanted
};

/// A print server of a test's own: its own folder, socket and loopback port, and queues that write down what they are
/// given. It ends, with all of its files, when this object does, or when this process dies. Failures to set it up are
/// exceptions (std::runtime_error), which fail the test.
class PrivateCupsd {
public:
    struct Options {
        std::string user{};          ///< a root process may let another user run the server; empty: this process's
        std::string configuration{}; ///< further lines of cupsd.conf
    };

    PrivateCupsd();
    explicit PrivateCupsd(const Options& options);
    ~PrivateCupsd();
    PrivateCupsd(const PrivateCupsd&) = delete;
    PrivateCupsd& operator=(const PrivateCupsd&) = delete;

    /// Adds a queue that accepts jobs and prints them. Of the PPD everything is taken but its filters: the recording
    /// one takes every document. The backend records what it gets.
    void addQueue(const std::string& name, const std::filesystem::path& ppd, const Printer& printer = {});
    void addQueueWithoutPpd(const std::string& name); ///< a raw one, whose jobs wait
    void deleteQueue(const std::string& name);

    void pauseQueue(const std::string& name); ///< its jobs wait
    void rejectJobs(const std::string& name); ///< it takes no jobs

    std::string socket() const;      ///< absolute path
    std::string hostAndPort() const; ///< "127.0.0.1:12345"
    const std::filesystem::path& folder() const { return folder_.path(); }
    std::filesystem::path recordFolder() const;

    /// Waits for the printer that waits, and lets it print.
    void letPrint() const;

    void kill();   ///< at once, by SIGKILL; the socket file stays behind
    void freeze(); ///< stops the process: it still is connected to, and answers nothing
    void thaw();

    /// Waits until the job's record is complete; nullopt if it is not by the deadline.
    std::optional<JobRecord> waitForRecord(int jobId,
                                           std::chrono::milliseconds deadline = std::chrono::seconds(30)) const;

    /// The IPP job-state words of every job the server knows, by number.
    std::map<int, std::string> jobStates() const;

    /// A job's attribute, as text with commas between its values; empty where the job has none of that name.
    std::string jobAttribute(int jobId, const std::string& name) const;

    std::string errorLog() const; ///< for a failing test's message

private:
    void prepareFolder(const Options& options);
    void start(const Options& options);
    void writeConfiguration(const Options& options) const;
    [[nodiscard]] bool answers() const;
    void runClient(const std::vector<std::string>& arguments) const;

    ScratchFolder folder_; ///< filters of another user pass through it
    int port_ = 0;
    pid_t pid_ = -1;
};

} // namespace test_support
