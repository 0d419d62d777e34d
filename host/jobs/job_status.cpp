#include "host/jobs/job_status.h"

#include "host/jobs/job_status_reading.h"
#include "host/jobs/job_text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace host {
namespace {

constexpr std::size_t kMaximumWordsBytes = 200;

/// What a printer's reason means for the one who waits for a job. Its severity may follow the keyword: "-error",
/// "-warning", "-report".
struct Hindrance {
    std::string_view reason;
    std::string_view words;
};

constexpr Hindrance kHindrances[] = {
    {"media-empty", "the printer is out of paper"},
    {"media-needed", "the printer waits for paper"},
    {"media-jam", "paper is jammed in the printer"},
    {"input-tray-missing", "the printer's paper tray is missing"},
    {"output-area-full", "the printer's output tray is full"},
    {"output-tray-missing", "the printer's output tray is missing"},
    {"marker-supply-empty", "the printer is out of ink"},
    {"toner-empty", "the printer is out of toner"},
    {"marker-waste-full", "the printer's waste ink tank is full"},
    {"cover-open", "the printer's cover is open"},
    {"door-open", "the printer's door is open"},
    {"interlock-open", "the printer is open"},
    {"offline", "the printer is off or not connected"},
    {"timed-out", "the printer does not answer"},
    {"connecting-to-device", "the printer is not reached yet"},
    {"shutdown", "the printer is switched off"},
    {"cups-missing-filter", "the queue's driver is not installed completely"},
    {"spool-area-full", "the print server's disk is full"},
};
constexpr std::string_view kReport = "-report"; // is no hindrance
constexpr std::string_view kSeverities[] = {"-error", "-warning"};
constexpr std::string_view kPaused = "paused";

constexpr std::string_view kHeldForPassword = "cups-held-for-authentication";
constexpr std::string_view kAuthenticationWanted = "auth-info-required"; // is a time to hold until
constexpr std::string_view kIndefinite = "indefinite";

std::vector<std::string_view> textsOf(ipp_t* answer, const char* name) {
    std::vector<std::string_view> texts;
    ipp_attribute_t* attribute = ippFindAttribute(answer, name, IPP_TAG_ZERO);
    for (int index = 0; index < ippGetCount(attribute); ++index)
        if (const char* text = ippGetString(attribute, index, nullptr))
            texts.emplace_back(text);
    return texts;
}

std::string_view textOf(ipp_t* answer, const char* name) {
    const std::vector<std::string_view> texts = textsOf(answer, name);
    return texts.empty() ? std::string_view() : texts.front();
}

int numberOf(ipp_t* answer, const char* name, int otherwise) {
    ipp_attribute_t* attribute = ippFindAttribute(answer, name, IPP_TAG_ZERO);
    return attribute == nullptr ? otherwise : ippGetInteger(attribute, 0);
}

bool contains(const std::vector<std::string_view>& texts, std::string_view text) {
    return std::ranges::find(texts, text) != texts.end();
}

/// What hinders the queue, in words joined by "and"; empty where nothing does.
std::string hindrancesOf(const std::vector<std::string_view>& reasons) {
    std::string all;
    for (std::string_view reason : reasons) {
        if (reason.ends_with(kReport))
            continue;
        for (const std::string_view severity : kSeverities)
            if (reason.ends_with(severity))
                reason.remove_suffix(severity.size());
        if (const auto* known = std::ranges::find(kHindrances, reason, &Hindrance::reason);
            known != std::end(kHindrances))
            all += (all.empty() ? "" : " and ") + std::string(known->words);
    }
    return all;
}

/// " (the server's own words)", or nothing.
std::string inParentheses(std::string_view serversWords) {
    const std::string words = plainText(serversWords, kMaximumWordsBytes);
    return words.empty() ? "" : " (" + words + ")";
}

Message askForQueue(Connection& connection, std::string_view queueUri) {
    Message request(ippNewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES), &ippDelete);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, std::string(queueUri).c_str());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    constexpr std::array kNames{"printer-state", "printer-state-reasons", "printer-state-message"};
    ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", kNames.size(), nullptr,
                  kNames.data());
    return connection.ask(std::move(request), "/");
}

/// A job that is not over: its words depend on the queue too. `queue` may be null.
void readUnfinished(ipp_t* job, ipp_t* queue, JobStatus& status) {
    const std::vector<std::string_view> reasons = textsOf(queue, "printer-state-reasons");
    const bool isPaused =
        numberOf(queue, "printer-state", IPP_PSTATE_IDLE) == IPP_PSTATE_STOPPED || contains(reasons, kPaused);
    const std::string hindrances = hindrancesOf(reasons);
    status.isHindered = isPaused || !hindrances.empty() || status.stage == JobStage::Stopped;
    if (isPaused)
        status.words =
            "The queue is paused" +
            (hindrances.empty() ? inParentheses(textOf(queue, "printer-state-message")) : " because " + hindrances) +
            ": the job waits until it is resumed.";
    else if (status.stage == JobStage::Stopped)
        status.words = "The job is stopped" + inParentheses(textOf(job, "job-printer-state-message")) +
                       ": look at the server's messages, and cancel it or print it again.";
    else if (!hindrances.empty())
        status.words = "The job waits because " + hindrances + ".";
    else if (status.stage == JobStage::Printing)
        status.words = status.impressions > 0
                           ? "The job is printing: " + std::to_string(status.impressions) + " sides so far."
                           : "The job is printing.";
    else
        status.words = "The job waits for its turn.";
}

void readHeld(ipp_t* job, JobStatus& status) {
    const std::string_view until = textOf(job, "job-hold-until");
    status.wantsPassword =
        until == kAuthenticationWanted || contains(textsOf(job, "job-state-reasons"), kHeldForPassword);
    status.isHindered = true;
    if (status.wantsPassword)
        status.words = "The job is held until a user's name and password are given for its printer.";
    else if (until.empty() || until == kIndefinite)
        status.words =
            "The job is held until it is released" + inParentheses(textOf(job, "job-printer-state-message")) + ".";
    else
        status.words = "The job is held until " + quotedText(until) + ".";
}

} // namespace

Message askForJob(Connection& connection, int jobId) {
    Message request(ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES), &ippDelete);
    const std::string uri = "ipp://localhost/jobs/" + std::to_string(jobId);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "job-uri", nullptr, uri.c_str());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    constexpr std::array kNames{"job-state",       "job-state-reasons",         "job-hold-until",
                                "job-printer-uri", "job-printer-state-message", "job-impressions-completed"};
    ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", kNames.size(), nullptr,
                  kNames.data());
    return connection.ask(std::move(request), "/jobs");
}

JobStatus readStatus(Connection& connection, ipp_t* job) {
    JobStatus status;
    status.impressions = std::max(numberOf(job, "job-impressions-completed", 0), 0);
    const auto unfinished = [&](JobStage stage) {
        status.stage = stage;
        const Message queue = askForQueue(connection, textOf(job, "job-printer-uri"));
        readUnfinished(job, queue.get(), status);
    };
    switch (numberOf(job, "job-state", IPP_JSTATE_PROCESSING)) {
    case IPP_JSTATE_PENDING:
        unfinished(JobStage::Waiting);
        break;
    case IPP_JSTATE_HELD:
        status.stage = JobStage::Held;
        readHeld(job, status);
        break;
    case IPP_JSTATE_STOPPED:
        unfinished(JobStage::Stopped);
        break;
    case IPP_JSTATE_CANCELED:
        status.stage = JobStage::Cancelled;
        status.words = "The job was cancelled.";
        break;
    case IPP_JSTATE_ABORTED:
        status.stage = JobStage::Failed;
        status.words = "The job failed" + inParentheses(textOf(job, "job-printer-state-message")) +
                       ": look at the server's messages before you print again.";
        break;
    case IPP_JSTATE_COMPLETED:
        status.stage = JobStage::Printed;
        status.words = "The job was printed.";
        break;
    default:
        unfinished(JobStage::Printing);
        break;
    }
    return status;
}

JobStatus jobStatus(const std::string& address, int jobId, const JobLimits& given, const PasswordPrompt& prompt) {
    JobStatus status;
    Server server;
    status.error = readServer(address, server);
    if (!status.error.empty())
        return status;
    const JobLimits limits = boundedLimits(given);
    const PasswordAnswers passwords(prompt, server.name);
    Connection connection(server, limits.connect, limits.response);
    if (!connection.isOpen()) {
        status.error = connection.unreachable(server);
        return status;
    }
    const Message response = askForJob(connection, jobId);
    const ipp_status_t answer = response ? ippGetStatusCode(response.get()) : cupsLastError();
    if (response && answer == IPP_STATUS_ERROR_NOT_FOUND)
        status.words = "The job " + std::to_string(jobId) + " is not known to " + server.name +
                       " any more: it was printed or removed.";
    else if (response && answer <= IPP_STATUS_OK_CONFLICTING)
        status = readStatus(connection, response.get());
    else
        status.error = "Nothing could be learnt of the job " + std::to_string(jobId) + " from " + server.name + " (" +
                       connection.cause() + "): ask again, and look for it in the queue.";
    return status;
}

} // namespace host
