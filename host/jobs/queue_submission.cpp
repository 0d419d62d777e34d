#include "host/jobs/queue_submission.h"

#include "host/jobs/document.h"
#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cups/cups.h>
#include <initializer_list>
#include <memory>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace host {
namespace {

constexpr int kDefaultPort = 631;
constexpr std::size_t kMaximumQueueNameBytes = 127; // a server's own limit
constexpr std::size_t kMaximumHostNameBytes = 255;
constexpr std::size_t kPieceBytes = 64 * 1024;
constexpr std::chrono::milliseconds kLongestCancellation = std::chrono::seconds(5);
constexpr std::chrono::milliseconds kShortestLimit{1}; // none at all would mean for ever
constexpr std::chrono::milliseconds kLongestLimit = std::chrono::hours(24);

using Message = std::unique_ptr<ipp_t, void (*)(ipp_t*)>;

/// A server to connect to: where it is, and how sentences call it.
struct Server {
    std::string host; ///< a name, a number or a socket's path
    int port = kDefaultPort;
    std::string name;
};

/// Everything that the steps of a submission know of it.
struct Submission {
    Server server;
    std::string queue;
    std::string printerUri;
    std::string resource;
    const JobRequest& request;
    JobLimits limits;
    const JobProgress& progress;

    std::string queueOnServer() const { return "the queue " + quotedText(queue) + " on " + server.name; }
};

// -- Addresses

std::optional<int> portNumber(std::string_view text) {
    int port = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (status != std::errc() || end != text.data() + text.size() || port < 1 || port > 65535)
        return std::nullopt;
    return port;
}

/// Reads "host", "host:port", "[IPv6]" and "[IPv6]:port". False if the text is none of these.
bool readHostAndPort(std::string_view text, Server& server) {
    std::string_view host = text;
    std::string_view rest;
    if (text.starts_with('[')) {
        const std::size_t bracket = text.find(']');
        if (bracket == std::string_view::npos)
            return false;
        host = text.substr(1, bracket - 1);
        rest = text.substr(bracket + 1);
    } else if (const std::size_t colon = text.find(':'); colon != std::string_view::npos) {
        host = text.substr(0, colon);
        rest = text.substr(colon);
    }
    if (host.empty() || host.size() > kMaximumHostNameBytes || host.find_first_of("/ @?#") != std::string_view::npos)
        return false;
    server.host = host;
    if (rest.empty())
        return true;
    const std::optional<int> port = portNumber(rest.substr(1));
    if (!rest.starts_with(':') || !port)
        return false;
    server.port = *port;
    return true;
}

/// Empty, with `server` filled in, or the sentence that says what is wrong with the text.
std::string readServer(const std::string& text, Server& server) {
    if (text.empty()) {
        server.host = cupsServer();
        server.port = ippPort();
        server.name = "the print server " + quotedText(server.host);
        return {};
    }
    server.name = "the print server " + quotedText(text);
    const std::string refusal = "There can be no print server " + quotedText(text) + ": ";
    if (!isUtf8(text) || hasControlCharacters(text))
        return refusal + "its address holds characters that no address has; correct it.";
    if (!text.starts_with('/'))
        return readHostAndPort(text, server)
                   ? ""
                   : refusal + "give the path of a socket, or a host's name and, after a colon, a port.";
    server.host = text;
    if (text.size() >= sizeof(sockaddr_un::sun_path))
        return refusal + "the path of a socket has at most " + std::to_string(sizeof(sockaddr_un::sun_path) - 1) +
               " bytes; choose a shorter one.";
    return {};
}

/// Empty, with the queue's URI and resource filled in, or the sentence that says why no queue can have this name.
std::string readQueue(const std::string& name, Submission& submission) {
    if (name.empty())
        return "No queue was named: choose the one to print on.";
    std::array<char, HTTP_MAX_URI> uri{};
    if (name.size() > kMaximumQueueNameBytes || name.find_first_of("/?# ") != std::string::npos ||
        hasControlCharacters(name) || !isUtf8(name) ||
        httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr, "localhost", 0,
                         "/printers/%s", name.c_str()) < HTTP_URI_STATUS_OK)
        return "There can be no queue " + quotedText(name) +
               ": its name has characters, or a length, that no queue's has.";
    submission.queue = name;
    submission.printerUri = uri.data();
    // A dotted name would be taken for a way out of the folder. The request itself names the queue by its URI.
    submission.resource = name.starts_with('.') ? "/" : "/printers/" + name;
    return {};
}

// -- Talking to a server

using Addresses = std::unique_ptr<http_addrlist_t, void (*)(http_addrlist_t*)>;

/// Connects once more, by the system's own means, and returns the error that this gives; 0 if it succeeds. For TCP and
/// Unix sockets alike the library itself only says that the host is down.
int connectionError(http_addr_t& address, std::chrono::milliseconds limit) {
    const int descriptor = ::socket(httpAddrFamily(&address), SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return errno;
    int error = ::connect(descriptor, &address.addr, static_cast<socklen_t>(httpAddrLength(&address))) == 0 ? 0 : errno;
    if (error == EINPROGRESS) {
        pollfd waiting{descriptor, POLLOUT, 0};
        socklen_t length = sizeof error;
        if (::poll(&waiting, 1, static_cast<int>(limit.count())) <= 0)
            error = ETIMEDOUT;
        else if (::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &length) != 0)
            error = errno;
    }
    ::close(descriptor);
    return error;
}

/// A connection of our own: the library's shared one knows no time-outs.
class Connection {
public:
    Connection(const Server& server, std::chrono::milliseconds connect, std::chrono::milliseconds response)
        : http_(nullptr, &httpClose) {
        const Addresses addresses(httpAddrGetList(server.host.c_str(), AF_UNSPEC, std::to_string(server.port).c_str()),
                                  &httpAddrFreeList);
        if (!addresses) {
            connectError_ = cupsLastErrorString();
            return;
        }
        const auto start = std::chrono::steady_clock::now();
        http_.reset(httpConnect2(server.host.c_str(), server.port, addresses.get(), AF_UNSPEC, cupsEncryption(), 1,
                                 static_cast<int>(connect.count()), nullptr));
        if (http_) {
            httpSetTimeout(http_.get(), std::chrono::duration<double>(response).count(), &Connection::giveUp, this);
            return;
        }
        connectError_ = cupsLastErrorString();
        const std::chrono::milliseconds left =
            std::chrono::duration_cast<std::chrono::milliseconds>(connect - (std::chrono::steady_clock::now() - start));
        if (const int error = connectionError(addresses->addr, std::max(left, std::chrono::milliseconds(0)));
            error != 0)
            connectError_ = std::generic_category().message(error);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool isOpen() const { return http_ != nullptr; }
    http_t* http() const { return http_.get(); }
    bool timedOut() const { return timedOut_; }
    const std::string& connectError() const { return connectError_; }

    /// Null without an answer. An answer may still be a refusal.
    Message ask(Message request, const std::string& resource) {
        return Message(cupsDoRequest(http_.get(), request.release(), resource.c_str()), &ippDelete);
    }

private:
    static int giveUp(http_t*, void* self) {
        static_cast<Connection*>(self)->timedOut_ = true;
        return 0;
    }

    bool timedOut_ = false;
    std::string connectError_;
    std::unique_ptr<http_t, void (*)(http_t*)> http_;
};

/// While it lives, this thread answers no server's question for a password: the library would ask on the terminal.
class NoPasswords {
public:
    NoPasswords() { cupsSetPasswordCB2(&NoPasswords::none, nullptr); }
    ~NoPasswords() { cupsSetPasswordCB2(nullptr, nullptr); } // the library's own again
    NoPasswords(const NoPasswords&) = delete;
    NoPasswords& operator=(const NoPasswords&) = delete;

private:
    static const char* none(const char*, http_t*, const char*, const char*, void*) { return nullptr; }
};

std::string unreachable(const Submission& submission, const Connection& connection) {
    return "No connection to " + submission.server.name + " (" + plainText(connection.connectError(), 200) +
           "): check that it runs and that its address is right.";
}

std::string unanswered(const Submission& submission, const Connection& connection, const std::string& step) {
    if (connection.timedOut())
        return "The job failed because " + submission.server.name + " gave no sign of life for " +
               std::to_string(submission.limits.response.count()) + " ms " + step +
               ": check that it is not overloaded or stopped, and print again.";
    return "The job failed because the connection to " + submission.server.name + " broke " + step + " (" +
           plainText(cupsLastErrorString(), 200) + "): check that it still runs, and print again.";
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
    {IPP_STATUS_ERROR_NOT_AUTHENTICATED, "wants a password", "ask its administrator for access"},
    {IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED, "wants a password", "ask its administrator for access"},
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
    if (!connection.timedOut() && isRefusal(status))
        return refused(submission, status, plainText(cupsLastErrorString(), 200));
    return unanswered(submission, connection, step);
}

// -- The requests

Message newRequest(ipp_op_t operation, const Submission& submission, int jobId = 0) {
    Message request(ippNewRequest(operation), &ippDelete);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, submission.printerUri.c_str());
    if (jobId != 0)
        ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", jobId);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    return request;
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

    const Message response = connection.ask(std::move(request), submission.resource);
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

/// Sends the whole document in pieces. Returns an empty text when the server has answered that it has it.
std::string sendDocument(const Submission& submission, Connection& connection, int jobId, Document& document) {
    Message request = newRequest(IPP_OP_SEND_DOCUMENT, submission, jobId);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "document-name", nullptr,
                 documentName(submission.request.documentPath).c_str());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr,
                 documentFormat(submission.request.options).c_str());
    ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", 1);

    http_t* http = connection.http();
    const std::string& resource = submission.resource;
    http_status_t status = cupsSendRequest(http, request.get(), resource.c_str(), CUPS_LENGTH_VARIABLE);
    std::array<char, kPieceBytes> piece;
    std::uint64_t sent = 0;
    while (status == HTTP_STATUS_CONTINUE) {
        const std::ptrdiff_t count = document.read(piece);
        if (count < 0)
            return document.error();
        if (count == 0)
            break;
        status = cupsWriteRequestData(http, piece.data(), static_cast<std::size_t>(count));
        sent += static_cast<std::uint64_t>(count);
        if (submission.progress && !submission.progress(sent, document.size()))
            return "The job for " + submission.queueOnServer() + " was given up while its document was sent.";
    }
    if (status != HTTP_STATUS_CONTINUE && connection.timedOut())
        return unanswered(submission, connection, "while the document was sent");
    // Also where sending failed: a server that wants no more says why, and then hangs up.
    const Message response(cupsGetResponse(http, resource.c_str()), &ippDelete);
    return failureOf(submission, connection, response,
                     status == HTTP_STATUS_CONTINUE ? "after the document was sent" : "while the document was sent");
}

/// A question for these attributes of the job or, with jobId 0, of the queue.
Message questionFor(ipp_op_t operation, const Submission& submission, int jobId,
                    std::initializer_list<const char*> names) {
    Message request = newRequest(operation, submission, jobId);
    ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                  static_cast<int>(names.size()), nullptr, names.begin());
    return request;
}

/// Is the queue paused? No, where the server does not tell.
bool isPaused(const Submission& submission, Connection& connection) {
    const Message response = connection.ask(
        questionFor(IPP_OP_GET_PRINTER_ATTRIBUTES, submission, 0, {"printer-state"}), submission.resource);
    ipp_attribute_t* state = ippFindAttribute(response.get(), "printer-state", IPP_TAG_ENUM);
    return state != nullptr && ippGetInteger(state, 0) == IPP_PSTATE_STOPPED;
}

/// Asks for the job anew. Empty if the server knows it, with `note` telling why it waits, if it does.
std::string readBack(const Submission& submission, Connection& connection, int jobId, std::string& note) {
    const Message response = connection.ask(
        questionFor(IPP_OP_GET_JOB_ATTRIBUTES, submission, jobId, {"job-id", "job-state"}), submission.resource);
    if (response && ippGetStatusCode(response.get()) == IPP_STATUS_ERROR_NOT_FOUND)
        return {}; // printed already, on a server that keeps no history
    std::string error = failureOf(submission, connection, response, "before it confirmed the job");
    if (!error.empty())
        return error;
    ipp_attribute_t* attribute = ippFindAttribute(response.get(), "job-state", IPP_TAG_ENUM);
    const int state = attribute == nullptr ? IPP_JSTATE_PROCESSING : ippGetInteger(attribute, 0);
    if (state == IPP_JSTATE_ABORTED || state == IPP_JSTATE_CANCELED)
        return "The job " + std::to_string(jobId) + " was sent, but " + submission.queueOnServer() + " has " +
               ippEnumString("job-state", state) + " it: look at the server's messages before you print again.";
    if (state == IPP_JSTATE_HELD)
        note = "The job is held until it is released.";
    else if (state == IPP_JSTATE_PENDING && isPaused(submission, connection))
        note = "The queue is paused: the job waits until it is resumed.";
    return {};
}

/// Removes a job whose document did not arrive, over a connection of its own. False if it may still be there.
bool cancelJob(const Submission& submission, int jobId) {
    const JobLimits& limits = submission.limits;
    Connection connection(submission.server, std::min(limits.connect, kLongestCancellation),
                          std::min(limits.response, kLongestCancellation));
    if (!connection.isOpen())
        return false;
    const Message response = connection.ask(newRequest(IPP_OP_CANCEL_JOB, submission, jobId), submission.resource);
    return response && ippGetStatusCode(response.get()) <= IPP_STATUS_OK_CONFLICTING;
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

JobResult submit(const Submission& submission, Document& document) {
    Connection connection(submission.server, submission.limits.connect, submission.limits.response);
    if (!connection.isOpen())
        return failed(unreachable(submission, connection));
    std::string error;
    const int jobId = createJob(submission, connection, error);
    if (!error.empty())
        return failed(std::move(error));
    error = sendDocument(submission, connection, jobId, document);
    if (!error.empty()) {
        if (cancelJob(submission, jobId))
            return failed(std::move(error));
        return failed(withLeftover(std::move(error), jobId), jobId);
    }
    std::string note;
    error = readBack(submission, connection, jobId, note);
    if (!error.empty())
        return failed(withLeftover(std::move(error), jobId), jobId);
    return {true, jobId, {}, {}, std::move(note)};
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
                        const JobProgress& progress) {
    const JobLimits bounded{std::clamp(limits.connect, kShortestLimit, kLongestLimit),
                            std::clamp(limits.response, kShortestLimit, kLongestLimit)};
    Submission submission{{}, {}, {}, {}, request, bounded, progress};
    Document document;
    std::string error = readServer(address.server, submission.server);
    if (error.empty())
        error = readQueue(address.queue, submission);
    if (error.empty())
        error = refusalForCopies(request.copies);
    if (error.empty())
        error = refusalForSchedule(request);
    if (error.empty())
        error = refusalForOptions(request.options);
    if (error.empty())
        error = document.open(request.documentPath);
    if (!error.empty())
        return failed(std::move(error));
    const NoPasswords noPasswords;
    return submit(submission, document);
}

} // namespace host
