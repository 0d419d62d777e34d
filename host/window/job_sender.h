#pragma once

#include "host/jobs/job.h"
#include "host/jobs/queue_submission.h"

#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace host {

/// Where jobs go: to a queue, or to a folder.
struct Destination {
    std::optional<QueueAddress> queue;
    std::string folder;
};

/// What became of a number of jobs that were sent one after the other.
struct SendOutcome {
    std::vector<JobResult> sent;     ///< those that were accepted, in order
    std::optional<JobResult> failed; ///< the one that was not; nothing was sent after it
    bool cancelled = false;          ///< by the user
};

/// Sends one job; blocks. Called in a thread of its own.
using Submission = std::function<JobResult(const Destination&, const JobRequest&, const JobProgress&)>;
/// To the queue or to the folder.
JobResult submit(const Destination& destination, const JobRequest& request, const JobProgress& progress);

/// Sends the jobs off the window's thread, and shows the progress in a window that is modal to this one and offers to
/// cancel. Returns when it is over.
class JobSender {
public:
    struct Words {
        QString title, sending, cancelling, cancel; ///< "%1" in `sending` is the document's name
    };
    JobSender(QWidget& window, Words words, Submission submission = submit)
        : window_(window), words_(std::move(words)), submission_(std::move(submission)) {}

    SendOutcome send(const Destination& destination, const std::vector<JobRequest>& requests);

private:
    QWidget& window_;
    Words words_;
    Submission submission_;
};

} // namespace host
