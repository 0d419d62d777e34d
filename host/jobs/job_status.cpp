#include "host/jobs/job_status.h"

#include "host/jobs/job_status_reading.h"
#include "host/jobs/job_text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <vector>

namespace host {
namespace {

constexpr std::size_t kMaximumWordsBytes = 200;

/// What a printer's reason means for the one who waits for a job. Its severity may follow the keyword: "-error",
/// "-warning", "-report".
struct HindranceRow {
    std::string_view reason;
    Hindrance hindrance;
    std::string_view words;
};

constexpr HindranceRow kHindrances[] = {
    {"media-empty", Hindrance::OutOfPaper, "the printer is out of paper"},
    {"media-needed", Hindrance::PaperNeeded, "the printer waits for paper"},
    {"media-jam", Hindrance::PaperJam, "paper is jammed in the printer"},
    {"input-tray-missing", Hindrance::InputTrayMissing, "the printer's paper tray is missing"},
    {"output-area-full", Hindrance::OutputTrayFull, "the printer's output tray is full"},
    {"output-tray-missing", Hindrance::OutputTrayMissing, "the printer's output tray is missing"},
    {"marker-supply-empty", Hindrance::OutOfInk, "the printer is out of ink"},
    {"toner-empty", Hindrance::OutOfToner, "the printer is out of toner"},
    {"marker-waste-full", Hindrance::WasteInkFull, "the printer's waste ink tank is full"},
    {"cover-open", Hindrance::CoverOpen, "the printer's cover is open"},
    {"door-open", Hindrance::DoorOpen, "the printer's door is open"},
    {"interlock-open", Hindrance::PrinterOpen, "the printer is open"},
    {"offline", Hindrance::Offline, "the printer is off or not connected"},
    {"timed-out", Hindrance::NoAnswer, "the printer does not answer"},
    {"connecting-to-device", Hindrance::NotReached, "the printer is not reached yet"},
    {"shutdown", Hindrance::SwitchedOff, "the printer is switched off"},
    {"cups-missing-filter", Hindrance::DriverIncomplete, "the queue's driver is not installed completely"},
    {"spool-area-full", Hindrance::ServerDiskFull, "the print server's disk is full"},
};
static_assert(std::size(kHindrances) == static_cast<std::size_t>(Hindrance::Count));
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

/// What hinders the queue.
std::vector<Hindrance> hindrancesOf(const std::vector<std::string_view>& reasons) {
    std::vector<Hindrance> all;
    for (std::string_view reason : reasons) {
        if (reason.ends_with(kReport))
            continue;
        for (const std::string_view severity : kSeverities)
            if (reason.ends_with(severity))
                reason.remove_suffix(severity.size());
        if (const auto* known = std::ranges::find(kHindrances, reason, &HindranceRow::reason);
            known != std::end(kHindrances))
            all.push_back(known->hindrance);
    }
    return all;
}

std::string hindrancesInWords(const std::vector<Hindrance>& hindrances) {
    std::string all;
    for (const Hindrance each : hindrances)
        all += (all.empty() ? "" : ", and ") +
               std::string(std::ranges::find(kHindrances, each, &HindranceRow::hindrance)->words);
    return all;
}

std::string pausedInWords(const JobStatus& status, const std::string& serversWords) {
    return "The queue is paused" +
           (status.hindrances.empty() ? serversWords : " because " + hindrancesInWords(status.hindrances)) +
           ": the job waits until it is resumed.";
}

std::string heldInWords(const JobStatus& status, const std::string& serversWords) {
    if (status.wantsPassword)
        return "The job is held until a user's name and password are given for its printer.";
    if (status.heldUntil.empty())
        return "The job is held until it is released" + serversWords + ".";
    return "The job is held until " + quotedText(status.heldUntil) + ".";
}

/// The whole status of a job that the server knows, as one sentence.
std::string statusInWords(const JobStatus& status) {
    const std::string serversWords = status.serversWords.empty() ? "" : " (" + status.serversWords + ")";
    switch (status.stage) {
    case JobStage::Held:
        return heldInWords(status, serversWords);
    case JobStage::Cancelled:
        return "The job was cancelled.";
    case JobStage::Failed:
        return "The job failed" + serversWords + ": look at the server's messages before you print again.";
    case JobStage::Printed:
        return "The job was printed.";
    default:
        break;
    }
    if (status.isQueuePaused)
        return pausedInWords(status, serversWords);
    if (status.stage == JobStage::Stopped)
        return "The job is stopped" + serversWords +
               ": look at the server's messages, and cancel it or print it again.";
    if (!status.hindrances.empty())
        return "The job waits because " + hindrancesInWords(status.hindrances) + ".";
    if (status.stage != JobStage::Printing)
        return "The job waits for its turn.";
    return status.impressions > 0 ? "The job is printing, sides so far: " + std::to_string(status.impressions) + "."
                                  : "The job is printing.";
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

std::string plainTextOf(ipp_t* answer, const char* name) {
    return plainText(textOf(answer, name), kMaximumWordsBytes);
}

/// A job that is not over: what becomes of it depends on the queue too. `queue` may be null.
void readUnfinished(ipp_t* job, ipp_t* queue, JobStatus& status) {
    const std::vector<std::string_view> reasons = textsOf(queue, "printer-state-reasons");
    status.isQueuePaused =
        numberOf(queue, "printer-state", IPP_PSTATE_IDLE) == IPP_PSTATE_STOPPED || contains(reasons, kPaused);
    status.hindrances = hindrancesOf(reasons);
    status.isHindered = status.isQueuePaused || !status.hindrances.empty() || status.stage == JobStage::Stopped;
    if (status.isQueuePaused)
        status.serversWords = plainTextOf(queue, "printer-state-message");
    else if (status.stage == JobStage::Stopped)
        status.serversWords = plainTextOf(job, "job-printer-state-message");
}

void readHeld(ipp_t* job, JobStatus& status) {
    const std::string_view until = textOf(job, "job-hold-until");
    status.wantsPassword =
        until == kAuthenticationWanted || contains(textsOf(job, "job-state-reasons"), kHeldForPassword);
    status.isHindered = true;
    if (until != kIndefinite && until != kAuthenticationWanted)
        status.heldUntil = plainText(until, kMaximumWordsBytes);
    status.serversWords = plainTextOf(job, "job-printer-state-message");
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
        break;
    case IPP_JSTATE_ABORTED:
        status.stage = JobStage::Failed;
        status.serversWords = plainTextOf(job, "job-printer-state-message");
        break;
    case IPP_JSTATE_COMPLETED:
        status.stage = JobStage::Printed;
        break;
    default:
        unfinished(JobStage::Printing);
        break;
    }
    status.words = statusInWords(status);
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
