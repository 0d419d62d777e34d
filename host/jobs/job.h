#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace host {

/// One option of a job, as its ticket shows it. Both texts are UTF-8.
struct JobOption {
    std::string name;
    std::string value;
};

/// What is to be printed. Everything in it is taken as untrusted and is checked before anything is sent or written.
struct JobRequest {
    /// A regular file that is readable and not empty. It is streamed, never read whole.
    std::string documentPath{};
    /// Cleaned where it has to be (see jobTitle() in job_text.h); empty: the document's base name.
    std::string title{};
    int copies = 1; ///< 1 to 9999
    /// Of options with the same name the last one counts.
    std::vector<JobOption> options{};
    int priority = 0;        ///< 1 (last) to 100 (first); 0: the server's own default. A folder ignores it.
    std::string holdUntil{}; ///< "indefinite", "night", "18:30" ...; empty: not held. A folder ignores it.
};

/// What became of a request. Holds plain texts; owned by the caller.
struct JobResult {
    bool ok = false;
    /// The queue's number for the job. Set also in a failure after which the job may still stand in the queue; else 0.
    int jobId = 0;
    std::string path{};  ///< the ticket's path, for a folder
    std::string error{}; ///< one sentence: what failed, where, and what to do; empty if ok
    std::string note{};  ///< one sentence about a job that was accepted but waits; mostly empty
};

/// Is called, on the submitting thread, after each piece of the document, with the bytes sent and the bytes in all, and
/// with the same numbers again while a server keeps us waiting. Answers false to give the job up: it is then removed
/// from its destination.
using JobProgress = std::function<bool(std::uint64_t sentBytes, std::uint64_t totalBytes)>;

} // namespace host
