#include "host/jobs/job_changes.h"

#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/jobs/server_connection.h"

#include <charconv>
#include <string_view>

namespace host {
namespace {

/// The number of "12" or "Queue-12"; 0 where there is none.
int jobNumber(std::string_view job) {
    const std::string_view digits = job.substr(job.rfind('-') + 1); // npos + 1 is 0
    int number = 0;
    const auto [end, status] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return status == std::errc() && end == digits.data() + digits.size() && number > 0 ? number : 0;
}

/// Is there anything to change, beside printing the job again?
bool changesAttributes(const JobChange& change) {
    return !change.title.empty() || change.copies || change.priority != 0 || !change.holdUntil.empty() ||
           !change.options.empty();
}

std::string refusalFor(const JobChange& change) {
    if (jobNumber(change.job) == 0)
        return "There can be no job " + quotedText(change.job) + ": give its number, as its request's id has it.";
    if (change.copies)
        if (std::string refusal = refusalForCopies(*change.copies); !refusal.empty())
            return refusal;
    if (change.priority < 0 || change.priority > 100)
        return "A job cannot have the priority " + std::to_string(change.priority) + ": give 1 to 100.";
    if (!isUtf8(change.holdUntil) || hasControlCharacters(change.holdUntil) || change.holdUntil.size() > 255)
        return "A job cannot be held until " + quotedText(change.holdUntil) +
               ": give a time of day or a server's word.";
    if (!changesAttributes(change) && !change.restarts)
        return "Nothing of the job " + quotedText(change.job) + " is to change: say what.";
    return refusalForOptions(change.options);
}

Message requestFor(ipp_op_t operation, int job) {
    Message request(ippNewRequest(operation), &ippDelete);
    const std::string uri = "ipp://localhost/jobs/" + std::to_string(job);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "job-uri", nullptr, uri.c_str());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    return request;
}

Message changeRequest(const JobChange& change, int job) {
    Message request = requestFor(IPP_OP_SET_JOB_ATTRIBUTES, job);
    if (!change.title.empty())
        ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_NAME, "job-name", nullptr,
                     plainText(change.title, kMaximumTitleBytes).c_str());
    if (change.copies)
        ippAddInteger(request.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "copies", *change.copies);
    if (change.priority != 0)
        ippAddInteger(request.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-priority", change.priority);
    if (!change.holdUntil.empty())
        ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_KEYWORD, "job-hold-until", nullptr, change.holdUntil.c_str());
    addOptions(request.get(), change.options);
    return request;
}

} // namespace

std::string changeJob(const std::string& address, const JobChange& change, const JobLimits& given) {
    const JobLimits limits = boundedLimits(given);
    Server server;
    std::string error = refusalFor(change);
    if (error.empty())
        error = readServer(address, server);
    if (!error.empty())
        return error;
    const NoPasswords noPasswords;
    Connection connection(server, limits.connect, limits.response);
    if (!connection.isOpen())
        return connection.unreachable(server);
    const int job = jobNumber(change.job);
    const auto ask = [&](Message request, const std::string& what) -> std::string {
        const Message response = connection.ask(std::move(request), "/jobs");
        if (response && ippGetStatusCode(response.get()) <= IPP_STATUS_OK_CONFLICTING)
            return {};
        return "The job " + std::to_string(job) + " on " + server.name + " could not be " + what + " (" +
               plainText(connection.timedOut() ? "the server gives no sign of life" : cupsLastErrorString(), 200) +
               "): check its number and that it is yours.";
    };
    if (changesAttributes(change))
        error = ask(changeRequest(change, job), "changed");
    if (error.empty() && change.restarts)
        error = ask(requestFor(IPP_OP_RESTART_JOB, job), "printed again");
    return error;
}

} // namespace host
