#pragma once

#include "host/jobs/job.h"
#include "host/jobs/passwords.h"

#include <chrono>
#include <string>
#include <vector>

namespace host {

/// Where a queue stands. Both texts are untrusted: they are checked, never used as a path and never given to a shell.
struct QueueAddress {
    /// A Unix socket's absolute path, or "host", "host:port", "[IPv6]:port" (port 631 if left out). Empty: the server
    /// that the system's configuration names.
    std::string server{};
    std::string queue{}; ///< a printer's or a class's name, as the server knows it
};

/// How long a submission waits. Looking up a host's name is not among these: the resolver has its own limit.
struct JobLimits {
    std::chrono::milliseconds connect = std::chrono::seconds(10);  ///< for the connection
    std::chrono::milliseconds response = std::chrono::seconds(30); ///< for each sign of life of a connected server
};

/// Sends the document and its options to the queue as one job, and returns when the server has taken all of it and
/// names the job when asked again; printing goes on without us. Blocks, so call it from a thread of its own; safe to
/// call from several. Asks the prompt, and nobody else, for a password: that of the server, and that of a printer whose
/// queue holds its jobs until one is given. After a failure no job is left behind, save where the error says so.
/// A job that waits, in a paused queue for example, is accepted: ok, with a note.
[[nodiscard]] JobResult submitToQueue(const QueueAddress& address, const JobRequest& request,
                                      const JobLimits& limits = {}, const JobProgress& progress = {},
                                      const PasswordPrompt& prompt = {});

/// The same for several documents, which become one job and are printed in this order; the request's own path is not
/// read. The progress is that of each document in turn.
[[nodiscard]] JobResult submitDocumentsToQueue(const QueueAddress& address, const JobRequest& request,
                                               const std::vector<std::string>& paths, const JobLimits& limits = {},
                                               const JobProgress& progress = {}, const PasswordPrompt& prompt = {});

} // namespace host
