#pragma once

#include "host/jobs/job.h"
#include "host/jobs/passwords.h"
#include "host/jobs/queue_submission.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// What is to change of a job that was sent and is not finished. Everything in it is taken as untrusted.
struct JobChange {
    std::string job;             ///< "12", or as a request's id says it: "Queue-12"
    std::string title{};         ///< empty: stays
    std::optional<int> copies{}; ///< none: stay
    int priority = 0;            ///< 1 to 100; 0: stays
    std::string holdUntil{};     ///< empty: stays
    bool restarts = false;       ///< the job is printed again
    std::vector<JobOption> options{};
};

/// Asks the server (see QueueAddress::server) to change the job. Returns an empty text, or the sentence that says why
/// it could not. Blocks no longer than the limits allow.
[[nodiscard]] std::string changeJob(const std::string& server, const JobChange& change, const JobLimits& limits = {},
                                    const PasswordPrompt& prompt = {});

/// The same for ending a job, which is named as in JobChange: nothing more of it is printed.
[[nodiscard]] std::string cancelJob(const std::string& server, const std::string& job, const JobLimits& limits = {},
                                    const PasswordPrompt& prompt = {});

/// Releases a job that is held until its printer's password is given (JobStatus::wantsPassword). A server takes it over
/// its own socket, over loopback, or encrypted.
[[nodiscard]] std::string authenticateJob(const std::string& server, const std::string& job,
                                          const Credentials& credentials, const JobLimits& limits = {},
                                          const PasswordPrompt& prompt = {});

} // namespace host
