#include "host/jobs/queue_submission.h"

#include "host/jobs/document.h"
#include "host/jobs/job_changes.h"
#include "host/jobs/job_status_reading.h"
#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/jobs/server_connection.h"

#include <algorithm>
#include <array>
#include <cups/cups.h>
#include <deque>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace host {
namespace {

constexpr std::size_t kPieceBytes = 1 << 16;
constexpr const char* kWhileSent = "while the document was sent";

/// The printer's words for what it wants to know of a user.
constexpr const char* kWantedOfUser = "auth-info-required";
constexpr std::string_view kUserName = "username";
constexpr std::string_view kPassword = "password";

/// The waits for removing a job after a failure; shorter where the server gave no sign of life already, so that its
/// failure is told soon.
constexpr std::chrono::milliseconds kLongestCancellation = std::chrono::seconds(5);
constexpr std::chrono::milliseconds kShortCancellation{900};

/// Everything that the steps of a submission know of it.
struct Submission {
    Server server;
    QueuePath queue;
    const JobRequest& request;
    std::string serverAddress;
    JobLimits limits;
    const JobProgress& progress;
    const PasswordPrompt& prompt;

    std::string queueOnServer() const { return "the queue " + quotedText(queue.name) + " on " + server.name; }
};

// -- Talking to a server

std::string givenUp(const Submission& submission, const std::string& step) {
    return "The job for " + submission.queueOnServer() + " was given up " + step + ".";
}

std::string unanswered(const Submission& submission, const Connection& connection, const std::string& step) {
    if (connection.wasGivenUp())
        return givenUp(submission, step);
    if (connection.timedOut())
        return "The job failed because " + submission.server.name + " gave no sign of life for " +
               std::to_string(submission.limits.response.count()) + " ms " + step +
               ": check that it is not overloaded or stopped, and print again.";
    return "The job failed because the connection to " + submission.server.name + " broke " + step + " (" +
           connection.cause() + "): check that it still runs, and print again.";
}

std::string statusMessage(ipp_t* response) {
    ipp_attribute_t* attribute = ippFindAttribute(response, "status-message", IPP_TAG_TEXT);
    const char* message = attribute == nullptr ? nullptr : ippGetString(attribute, 0, nullptr);
    return plainText(message == nullptr ? cupsLastErrorString() : message, 200);
}

/// What a refusal means: the sentence's middle, between the queue's name and the server's own words, and what to do.
struct Refusal {
    ipp_status_t status;
    std::string_view meaning;
    std::string_view advice;
};

constexpr Refusal kRefusals[] = {
    {IPP_STATUS_ERROR_NOT_FOUND, "does not exist", "choose another queue"},
    {IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS, "accepts no jobs", "choose another queue, or have it accept jobs again"},
    {IPP_STATUS_ERROR_REQUEST_ENTITY, "takes no document as large as this one",
     "print fewer pages at a time, or have the server's limit raised"},
    {IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED, "cannot print this kind of document",
     "convert it, for example to PDF"},
    {IPP_STATUS_ERROR_NOT_AUTHENTICATED, "wants a user's name and password", kPasswordAdvice},
    {IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED, "wants a user's name and password", kPasswordAdvice},
    {IPP_STATUS_ERROR_NOT_AUTHORIZED, "is not open to this user", "ask its administrator for access"},
    {IPP_STATUS_ERROR_FORBIDDEN, "is not open to this user", "ask its administrator for access"},
};
constexpr Refusal kOtherRefusal = {IPP_STATUS_ERROR_INTERNAL, "refused the job", "ask its administrator why"};

std::string refused(const Submission& submission, ipp_status_t status, const std::string& serversWords) {
    const auto known = std::ranges::find(kRefusals, status, &Refusal::status);
    const Refusal& refusal = known == std::end(kRefusals) ? kOtherRefusal : *known;
    return "The job failed because " + submission.queueOnServer() + " " + std::string(refusal.meaning) + " (" +
           serversWords + "): " + std::string(refusal.advice) + ".";
}

/// Is this one of the refusals that also come as a bare HTTP status, without an answer to read?
bool isRefusal(ipp_status_t status) {
    return std::ranges::find(kRefusals, status, &Refusal::status) != std::end(kRefusals);
}

/// Empty if the answer is a good one, else the sentence that tells why there is none or why it is a bad one.
std::string failureOf(const Submission& submission, const Connection& connection, const Message& response,
                      const std::string& step) {
    if (response) {
        const ipp_status_t status = ippGetStatusCode(response.get());
        return status <= IPP_STATUS_OK_CONFLICTING ? "" : refused(submission, status, statusMessage(response.get()));
    }
    const bool tooLarge = httpGetStatus(connection.http()) == HTTP_STATUS_REQUEST_TOO_LARGE;
    const ipp_status_t status = tooLarge ? IPP_STATUS_ERROR_REQUEST_ENTITY : cupsLastError();
    if (!connection.timedOut() && !connection.wasGivenUp() && isRefusal(status))
        return refused(submission, status, plainText(cupsLastErrorString(), 200));
    return unanswered(submission, connection, step);
}

// -- The requests

Message newRequest(ipp_op_t operation, const Submission& submission, int jobId = 0) {
    Message request(ippNewRequest(operation), &ippDelete);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, submission.queue.uri.c_str());
    if (jobId != 0)
        ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", jobId);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    return request;
}

/// What the printer behind the queue wants to know of a user, by the printer's own words for it; empty for nothing.
std::vector<std::string> wantedOfUser(const Submission& submission, Connection& connection) {
    Message request = newRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, submission);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr, kWantedOfUser);
    const Message response = connection.ask(std::move(request), submission.queue.resource);
    std::vector<std::string> wanted;
    ipp_attribute_t* attribute = ippFindAttribute(response.get(), kWantedOfUser, IPP_TAG_KEYWORD);
    wanted.reserve(static_cast<std::size_t>(ippGetCount(attribute)));
    for (int index = 0; index < ippGetCount(attribute); ++index)
        wanted.emplace_back(ippGetString(attribute, index, nullptr));
    if (std::ranges::find(wanted, kPassword) == wanted.end()) // nobody need be asked for the other kinds
        wanted.clear();
    return wanted;
}

/// Asks the prompt for what the printer wants, and adds it to the request. Without a prompt the job goes as it is, and
/// is held where the printer insists. Empty, or the sentence that says that nobody answered.
std::string addCredentials(const Submission& submission, Connection& connection, ipp_t* request) {
    if (!submission.prompt)
        return {};
    const std::vector<std::string> wanted = wantedOfUser(submission, connection);
    if (wanted.empty())
        return {};
    const auto given =
        submission.prompt({.server = submission.queueOnServer(), .user = plainText(cupsUser(), kMaximumTitleBytes)});
    if (!given)
        return "The job was given up because " + submission.queueOnServer() +
               " wants a user's name and password: give them, or choose another queue.";
    std::vector<const char*> values(wanted.size());
    std::ranges::transform(wanted, values.begin(), [&](const std::string& each) {
        return each == kPassword ? given->password.c_str() : each == kUserName ? given->user.c_str() : "";
    });
    ippAddStrings(request, IPP_TAG_JOB, IPP_TAG_TEXT, "auth-info", static_cast<int>(values.size()), nullptr,
                  values.data());
    return {};
}

/// Creates an empty job, which the server holds until its document is there. Its number, or 0 with an error.
int createJob(const Submission& submission, Connection& connection, std::string& error) {
    const JobRequest& job = submission.request;
    Message request = newRequest(IPP_OP_CREATE_JOB, submission);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, jobTitle(job).c_str());
    ippAddInteger(request.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "copies", job.copies);
    if (job.priority != 0)
        ippAddInteger(request.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-priority", job.priority);
    if (!job.holdUntil.empty())
        ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_KEYWORD, "job-hold-until", nullptr, job.holdUntil.c_str());
    addOptions(request.get(), job.options);
    error = addCredentials(submission, connection, request.get());
    if (!error.empty())
        return 0;

    const Message response = connection.ask(std::move(request), submission.queue.resource);
    error = failureOf(submission, connection, response, "when the job was announced");
    if (!error.empty())
        return 0;
    ipp_attribute_t* attribute = ippFindAttribute(response.get(), "job-id", IPP_TAG_INTEGER);
    const int jobId = attribute == nullptr ? 0 : ippGetInteger(attribute, 0);
    if (jobId <= 0)
        error = "The job failed because " + submission.server.name +
                " gave it no number: check that this is a print server, and print again.";
    return jobId;
}

/// A document of the job, opened, and its path.
struct OpenedDocument {
    std::string path;
    Document document{};
};
using Documents = std::deque<OpenedDocument>; // documents cannot be moved

/// How much of the document that is being sent the server has.
struct Position {
    std::uint64_t sent = 0, all = 0; ///< bytes
};

bool goesOn(const Submission& submission, const Position& position) {
    return !submission.progress || submission.progress(position.sent, position.all);
}

/// Sends the whole document in pieces. Returns an empty text when the server has answered that it has it.
std::string sendDocument(const Submission& submission, Connection& connection, int jobId, OpenedDocument& opened,
                         Position& position, bool isLast) {
    Document& document = opened.document;
    Message request = newRequest(IPP_OP_SEND_DOCUMENT, submission, jobId);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "document-name", nullptr,
                 documentName(opened.path).c_str());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr,
                 documentFormat(submission.request.options).c_str());
    ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", isLast ? 1 : 0);

    http_t* http = connection.http();
    const std::string& resource = submission.queue.resource;
    position = {.sent = 0, .all = document.size()};
    connection.restartTime();
    http_status_t status = cupsSendRequest(http, request.get(), resource.c_str(), CUPS_LENGTH_VARIABLE);
    std::array<char, kPieceBytes> piece;
    while (status == HTTP_STATUS_CONTINUE) {
        const std::ptrdiff_t count = document.read(piece);
        if (count < 0)
            return document.error();
        if (count == 0)
            break;
        status = cupsWriteRequestData(http, piece.data(), static_cast<std::size_t>(count));
        position.sent += static_cast<std::uint64_t>(count);
        connection.restartTime();
        if (!goesOn(submission, position))
            return givenUp(submission, kWhileSent);
    }
    if (status != HTTP_STATUS_CONTINUE && (connection.timedOut() || connection.wasGivenUp()))
        return unanswered(submission, connection, kWhileSent);
    // Also where sending failed: a server that wants no more says why, and then hangs up.
    const Message response(cupsGetResponse(http, resource.c_str()), &ippDelete);
    return failureOf(submission, connection, response,
                     status == HTTP_STATUS_CONTINUE ? "after the document was sent" : kWhileSent);
}

/// Asks for the job anew. Empty if the server knows it, with `note` telling why it waits, if it does.
std::string readBack(const Submission& submission, Connection& connection, int jobId, std::string& note) {
    const Message response = askForJob(connection, jobId);
    if (response && ippGetStatusCode(response.get()) == IPP_STATUS_ERROR_NOT_FOUND)
        return {}; // printed already, on a server that keeps no history
    std::string error = failureOf(submission, connection, response, "before it confirmed the job");
    if (!error.empty())
        return error;
    const JobStatus status = readStatus(connection, response.get());
    if (status.stage == JobStage::Failed || status.stage == JobStage::Cancelled)
        return "The job " + std::to_string(jobId) + " was sent to " + submission.queueOnServer() +
               ", but: " + status.words;
    if (status.isHindered)
        note = status.words;
    return {};
}

/// Removes a job whose document did not arrive, over a connection of its own. False if it may still be there.
bool removeJob(const Submission& submission, int jobId, bool isServerSilent) {
    const std::chrono::milliseconds longest = isServerSilent ? kShortCancellation : kLongestCancellation;
    const JobLimits& limits = submission.limits;
    return cancelJob(submission.serverAddress, std::to_string(jobId),
                     {.connect = std::min(limits.connect, longest), .response = std::min(limits.response, longest)},
                     submission.prompt)
        .empty();
}

/// Adds to a sentence what the user must know of the job that could not be removed.
std::string withLeftover(std::string sentence, int jobId) {
    if (sentence.ends_with('.'))
        sentence.pop_back();
    return sentence + "; the job " + std::to_string(jobId) + " may still stand in the queue, so look for it there.";
}

JobResult failed(std::string error, int jobId = 0) {
    return {false, jobId, {}, std::move(error), {}};
}

JobResult submit(const Submission& submission, Documents& documents) {
    Position position{.sent = 0, .all = documents.front().document.size()};
    Connection connection(submission.server, submission.limits.connect, submission.limits.response);
    if (!connection.isOpen())
        return failed(connection.unreachable(submission.server));
    connection.askWhileWaiting([&] { return goesOn(submission, position); });
    std::string error;
    const int jobId = createJob(submission, connection, error);
    if (!error.empty())
        return failed(std::move(error));
    for (std::size_t index = 0; error.empty() && index < documents.size(); ++index)
        error = sendDocument(submission, connection, jobId, documents[index], position, index + 1 == documents.size());
    std::string note;
    const bool isSent = error.empty();
    if (isSent)
        error = readBack(submission, connection, jobId, note);
    if (error.empty())
        return {true, jobId, {}, {}, std::move(note)};
    // A job that was sent whole may be printing: it is removed only where that is wished.
    if ((!isSent || connection.wasGivenUp()) &&
        removeJob(submission, jobId, connection.timedOut() || connection.wasGivenUp()))
        return failed(std::move(error));
    return failed(withLeftover(std::move(error), jobId), jobId);
}

std::string refusalForSchedule(const JobRequest& request) {
    if (request.priority < 0 || request.priority > 100)
        return "A job cannot have the priority " + std::to_string(request.priority) + ": give 1 to 100.";
    if (!isUtf8(request.holdUntil) || hasControlCharacters(request.holdUntil) || request.holdUntil.size() > 255)
        return "A job cannot be held until " + quotedText(request.holdUntil) +
               ": give a time of day or a server's word.";
    return {};
}

} // namespace

JobResult submitToQueue(const QueueAddress& address, const JobRequest& request, const JobLimits& limits,
                        const JobProgress& progress, const PasswordPrompt& prompt) {
    return submitDocumentsToQueue(address, request, {request.documentPath}, limits, progress, prompt);
}

JobResult submitDocumentsToQueue(const QueueAddress& address, const JobRequest& request,
                                 const std::vector<std::string>& paths, const JobLimits& limits,
                                 const JobProgress& progress, const PasswordPrompt& prompt) {
    Submission submission{{}, {}, request, address.server, boundedLimits(limits), progress, prompt};
    Documents documents;
    std::string error = readServer(address.server, submission.server);
    if (error.empty())
        error = readQueue(address.queue, submission.queue);
    if (error.empty())
        error = refusalForCopies(request.copies);
    if (error.empty())
        error = refusalForSchedule(request);
    if (error.empty())
        error = refusalForOptions(request.options);
    if (error.empty() && paths.empty())
        error = "There is no document to print: name one.";
    for (std::size_t index = 0; error.empty() && index < paths.size(); ++index) {
        OpenedDocument& opened = documents.emplace_back();
        opened.path = paths[index];
        error = opened.document.open(opened.path);
    }
    if (!error.empty())
        return failed(std::move(error));
    const PasswordAnswers passwords(prompt, submission.server.name);
    return submit(submission, documents);
}

} // namespace host
