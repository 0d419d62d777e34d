#include "host/jobs/job_changes.h"

#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/jobs/server_connection.h"

#include <array>
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

std::string refusalForJob(const std::string& job) {
    return jobNumber(job) != 0
               ? ""
               : "There can be no job " + quotedText(job) + ": give its number, as its request's id has it.";
}

std::string refusalFor(const JobChange& change) {
    if (std::string refusal = refusalForJob(change.job); !refusal.empty())
        return refusal;
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

/// A request about a job, and what it does to it, in words.
struct Step {
    Message request;
    const char* done;
};

/// Sends the steps, one after the other, as long as they succeed.
std::string carryOut(const std::string& address, const std::string& name, std::vector<Step> steps,
                     const JobLimits& given, const PasswordPrompt& prompt) {
    Server server;
    if (std::string error = readServer(address, server); !error.empty())
        return error;
    const JobLimits limits = boundedLimits(given);
    const PasswordAnswers passwords(prompt, server.name);
    Connection connection(server, limits.connect, limits.response);
    if (!connection.isOpen())
        return connection.unreachable(server);
    for (Step& step : steps) {
        const Message response = connection.ask(std::move(step.request), "/jobs");
        if (!response || ippGetStatusCode(response.get()) > IPP_STATUS_OK_CONFLICTING)
            return "The job " + std::to_string(jobNumber(name)) + " on " + server.name + " could not be " + step.done +
                   " (" + connection.cause() + "): check " +
                   (response ? "its number and that it is yours." : "that the server runs and that you may use it.");
    }
    return {};
}

} // namespace

std::string changeJob(const std::string& server, const JobChange& change, const JobLimits& limits,
                      const PasswordPrompt& prompt) {
    if (std::string refusal = refusalFor(change); !refusal.empty())
        return refusal;
    const int job = jobNumber(change.job);
    std::vector<Step> steps;
    if (changesAttributes(change))
        steps.push_back({changeRequest(change, job), "changed"});
    if (change.restarts)
        steps.push_back({requestFor(IPP_OP_RESTART_JOB, job), "printed again"});
    return carryOut(server, change.job, std::move(steps), limits, prompt);
}

std::string cancelJob(const std::string& server, const std::string& job, const JobLimits& limits,
                      const PasswordPrompt& prompt) {
    if (std::string refusal = refusalForJob(job); !refusal.empty())
        return refusal;
    std::vector<Step> steps;
    steps.push_back({requestFor(IPP_OP_CANCEL_JOB, jobNumber(job)), "cancelled"});
    return carryOut(server, job, std::move(steps), limits, prompt);
}

std::string authenticateJob(const std::string& server, const std::string& job, const Credentials& credentials,
                            const JobLimits& limits, const PasswordPrompt& prompt) {
    if (std::string refusal = refusalForJob(job); !refusal.empty())
        return refusal;
    Message request = requestFor(IPP_OP_CUPS_AUTHENTICATE_JOB, jobNumber(job));
    const std::array<const char*, 2> info{credentials.user.c_str(), credentials.password.c_str()};
    ippAddStrings(request.get(), IPP_TAG_JOB, IPP_TAG_TEXT, "auth-info", info.size(), nullptr, info.data());
    std::vector<Step> steps;
    steps.push_back({std::move(request), "released"});
    return carryOut(server, job, std::move(steps), limits, prompt);
}

} // namespace host
