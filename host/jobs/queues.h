#pragma once

#include "host/jobs/job.h"
#include "host/jobs/passwords.h"
#include "host/jobs/queue_submission.h"

#include <string>
#include <vector>

namespace host {

/// A queue that can be printed on, or an instance of one: the same queue with other options of the user's. Texts are
/// plain, for people; the name is as the server knows it.
struct Queue {
    std::string name;
    std::string instance; ///< empty: the queue itself
    std::string description;
    std::string location;
    bool isDefault = false;
    bool isAccepting = true;
    std::string state;              ///< "idle", "processing" or "stopped"; empty where the server does not say
    std::vector<JobOption> options; ///< what the user and the system keep for it (lpoptions)
};

/// The queues of a server, ordered by name and instance, or why there are none to see.
struct QueueList {
    std::vector<Queue> queues;
    std::string error; ///< one sentence; empty where the server answered
};

/// The default queue that the environment names, by LPDEST or else by PRINTER.
struct NamedDefault {
    std::string variable; ///< empty: neither names one
    std::string queue, instance;
};
[[nodiscard]] NamedDefault defaultOfEnvironment();

/// Asks the server (see QueueAddress::server) for its queues and adds what the user's and the system's lpoptions say of
/// them: instances, options, and, before the server's own word, which is the default. Before all of these comes the
/// environment's default; where the server has no such queue, there is none. Blocks no longer than the limits allow and
/// the prompt takes, which is asked where the server wants a password; so call it from a thread of its own where a
/// window is shown.
[[nodiscard]] QueueList listQueues(const std::string& server, const JobLimits& limits = {},
                                   const PasswordPrompt& prompt = {});

/// A queue's PPD, or why it cannot be had.
struct FetchedPpd {
    std::string text;  ///< empty, without an error: the queue exists and has no PPD
    std::string error; ///< one sentence
};

/// Fetches the PPD of a queue from its server, local or remote. Nothing is kept on disk. Blocks and asks like
/// listQueues().
[[nodiscard]] FetchedPpd fetchPpd(const QueueAddress& address, const JobLimits& limits = {},
                                  const PasswordPrompt& prompt = {});

} // namespace host
