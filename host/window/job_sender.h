#pragma once

#include "host/jobs/job.h"
#include "host/jobs/job_status.h"
#include "host/jobs/passwords.h"
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
    PasswordPrompt passwords{}; ///< asked where the queue's server wants one
};

/// A job and its documents, which are printed in this order; the request's own path is not read. A folder takes one
/// document a job.
struct DocumentsJob {
    JobRequest request{};
    std::vector<std::string> documents{}; ///< paths; at least one
};

/// What a sent job's destination says of it, for the time in which the window follows it.
using StatusReading = std::function<JobStatus(const Destination&, const JobResult&)>;
/// Asks the queue's server.
JobStatus readStatus(const Destination& destination, const JobResult& result);
/// Takes a sent job out of its queue again. Answers why it could not; empty where it did.
using JobCancelling = std::function<std::string(const Destination&, const JobResult&)>;
std::string cancelSent(const Destination& destination, const JobResult& result);
/// Releases a sent job that is held until the printer's password is given. Answers as JobCancelling does.
using JobAuthentication = std::function<std::string(const Destination&, const JobResult&, const Credentials&)>;
std::string authenticateSent(const Destination& destination, const JobResult& result, const Credentials& credentials);

/// What became of a number of jobs that were sent one after the other.
struct SendOutcome {
    std::vector<JobResult> sent;     ///< those that were accepted, in order
    std::optional<JobResult> failed; ///< the one that was not; nothing was sent after it
    bool cancelled = false;          ///< by the user
};

/// Sends one job; blocks. Called in a thread of its own.
using Submission = std::function<JobResult(const Destination&, const DocumentsJob&, const JobProgress&)>;
/// To the queue or to the folder.
JobResult submit(const Destination& destination, const DocumentsJob& job, const JobProgress& progress);

/// Sends the jobs off the window's thread, and shows the progress in a window that is modal to this one and offers to
/// cancel: the bytes that were sent, then what the queue says of each job, until it prints, needs somebody, or has
/// waited for some seconds. Where the printer wants a password, the destination's prompt is asked. Returns when it is
/// over.
class JobSender {
public:
    struct Words {
        QString title, sending, cancelling, cancel; ///< "%1" in `sending` is the document's name
        QString bytes;                              ///< "%1" of "%2"
        std::function<QString(const JobStatus&)> status;
    };
    JobSender(QWidget& window, Words words, Submission submission = submit, StatusReading status = readStatus,
              JobCancelling cancelling = cancelSent, JobAuthentication authentication = authenticateSent)
        : window_(window), words_(std::move(words)), submission_(std::move(submission)), status_(std::move(status)),
          cancelling_(std::move(cancelling)), authentication_(std::move(authentication)) {}

    SendOutcome send(const Destination& destination, const std::vector<DocumentsJob>& jobs);

private:
    [[nodiscard]] bool giveItsPassword(const Destination& destination, JobResult& job, bool isAgain) const;

    QWidget& window_;
    Words words_;
    Submission submission_;
    StatusReading status_;
    JobCancelling cancelling_;
    JobAuthentication authentication_;
};

} // namespace host
