#include "host/jobs/queues.h"

#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/jobs/server_connection.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <string_view>
#include <utility>

namespace host {
namespace {

constexpr std::size_t kLargestPpd = 4 << 20; // bytes; a larger one is none that could be opened
constexpr std::size_t kMaximumTextBytes = 255;
constexpr std::string_view kDefaultSuffix = "-default";
constexpr const char* kTheQueues = "The queues";

/// Names under which the library tells of a queue itself among the options that are kept for it.
constexpr std::string_view kAboutTheQueue[] = {"auth-info-required", "device-uri"};
constexpr std::string_view kAboutTheQueuePrefixes[] = {"printer-", "marker-"};

struct StateName {
    std::string_view value;
    const char* word;
};
constexpr StateName kStates[] = {{"3", "idle"}, {"4", "processing"}, {"5", "stopped"}};

using OptionMap = std::map<std::string, std::string, std::less<>>;

std::string valueText(ipp_attribute_t* attribute) {
    if (ippGetValueTag(attribute) == IPP_TAG_BOOLEAN)
        return ippGetBoolean(attribute, 0) ? "true" : "false";
    return attributeText(attribute);
}

/// Why nothing was learnt of `what` ("The queues", for example), where `status` is what the server said last.
std::string noAnswer(const std::string& what, const Server& server, const Connection& connection,
                     const JobLimits& limits, ipp_status_t status) {
    if (connection.timedOut())
        return "There is no answer from " + server.name + ": it gave no sign of life for " +
               std::to_string(limits.response.count()) + " ms; check that it is not overloaded or stopped.";
    const std::string refusal = what + " cannot be had because " + server.name;
    if (status == IPP_STATUS_ERROR_NOT_AUTHENTICATED || status == IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED)
        return refusal + " wants a user's name and password: " + std::string(kPasswordAdvice) + ".";
    if (status == IPP_STATUS_ERROR_FORBIDDEN || status == IPP_STATUS_ERROR_NOT_AUTHORIZED)
        return refusal + " is not open to this user: ask its administrator for access.";
    return "There is no answer from " + server.name + " that could be used (" + plainText(cupsLastErrorString(), 200) +
           "): check that it is a print server and that you may use it.";
}

Message question(ipp_op_t operation, std::initializer_list<const char*> attributes) {
    Message request(ippNewRequest(operation), &ippDelete);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                  static_cast<int>(attributes.size()), nullptr, attributes.begin());
    return request;
}

/// Each queue of the answer, with the options that jobs have there unless they say otherwise.
std::map<std::string, OptionMap> defaultsByQueue(ipp_t* response) {
    std::map<std::string, OptionMap> queues;
    std::string name;
    OptionMap defaults;
    const auto endQueue = [&] {
        if (!name.empty())
            queues.insert_or_assign(std::exchange(name, {}), std::exchange(defaults, {}));
    };
    for (ipp_attribute_t* each = ippFirstAttribute(response); each != nullptr; each = ippNextAttribute(response)) {
        const char* attribute = ippGetName(each);
        if (attribute == nullptr) { // stands between two queues
            endQueue();
            continue;
        }
        const std::string_view text(attribute);
        if (text == "printer-name")
            name = ippGetString(each, 0, nullptr);
        else if (text.ends_with(kDefaultSuffix))
            defaults.insert_or_assign(std::string(text.substr(0, text.size() - kDefaultSuffix.size())),
                                      valueText(each));
    }
    endQueue();
    return queues;
}

bool isAboutTheQueue(std::string_view name) {
    return std::ranges::find(kAboutTheQueue, name) != std::end(kAboutTheQueue) ||
           std::ranges::any_of(kAboutTheQueuePrefixes,
                               [name](std::string_view prefix) { return name.starts_with(prefix); });
}

std::string textOption(const cups_dest_t& destination, const char* name) {
    const char* value = cupsGetOption(name, destination.num_options, destination.options);
    return value == nullptr ? "" : plainText(value, kMaximumTextBytes);
}

Queue queueOf(const cups_dest_t& destination, const OptionMap& defaults) {
    Queue queue{.name = destination.name,
                .instance = destination.instance == nullptr ? "" : destination.instance,
                .description = textOption(destination, "printer-info"),
                .location = textOption(destination, "printer-location"),
                .isDefault = destination.is_default != 0,
                .isAccepting = textOption(destination, "printer-is-accepting-jobs") != "false",
                .state = {},
                .options = {}};
    const std::string state = textOption(destination, "printer-state");
    if (const auto* known = std::ranges::find(kStates, state, &StateName::value); known != std::end(kStates))
        queue.state = known->word;
    for (int index = 0; index < destination.num_options; ++index) {
        const cups_option_t& option = destination.options[index];
        const auto serversOwn = defaults.find(std::string_view(option.name));
        if (!isAboutTheQueue(option.name) && (serversOwn == defaults.end() || serversOwn->second != option.value))
            queue.options.push_back({option.name, option.value});
    }
    return queue;
}

/// The destinations as the library knows them.
class Destinations {
public:
    explicit Destinations(http_t* http) : count_(cupsGetDests2(http, &list_)) {}
    ~Destinations() { cupsFreeDests(count_, list_); }
    Destinations(const Destinations&) = delete;
    Destinations& operator=(const Destinations&) = delete;

    const cups_dest_t* begin() const { return list_; }
    const cups_dest_t* end() const { return list_ + count_; }

private:
    cups_dest_t* list_ = nullptr;
    int count_ = 0;
};

// -- PPDs

/// What came back for a PPD.
struct Download {
    http_status_t status = HTTP_STATUS_ERROR;
    std::string text;
    bool tooLarge = false;
};

/// Asks for the resource, with what is known of the user, and returns the answer's beginning.
http_status_t get(Connection& connection, const std::string& resource) {
    http_t* http = connection.http();
    httpClearFields(http);
    connection.restartTime();
    if (const char* known = httpGetAuthString(http))
        httpSetField(http, HTTP_FIELD_AUTHORIZATION, known);
    if (httpGet(http, resource.c_str()) != 0)
        return HTTP_STATUS_ERROR;
    http_status_t status = HTTP_STATUS_CONTINUE;
    while (status == HTTP_STATUS_CONTINUE)
        status = httpUpdate(http);
    return status;
}

Download download(Connection& connection, const std::string& resource) {
    constexpr int kMostAnswers = 2 * kPasswordAttempts; // the library also says who this process is, without asking
    Download result;
    http_t* http = connection.http();
    result.status = get(connection, resource);
    for (int answers = 0; result.status == HTTP_STATUS_UNAUTHORIZED && answers < kMostAnswers; ++answers) {
        httpFlush(http);
        if (cupsDoAuthentication(http, "GET", resource.c_str()) != 0)
            return result;
        result.status = connection.reconnect() ? get(connection, resource) : HTTP_STATUS_ERROR;
    }
    if (result.status != HTTP_STATUS_OK) {
        httpFlush(http);
        return result;
    }
    std::array<char, 1 << 14> piece;
    for (ssize_t count; (count = httpRead2(http, piece.data(), piece.size())) != 0; connection.restartTime()) {
        if (count < 0 || connection.timedOut()) {
            result.status = HTTP_STATUS_ERROR;
            return result;
        }
        result.text.append(piece.data(), static_cast<std::size_t>(count));
        if (result.text.size() > kLargestPpd) {
            result.tooLarge = true;
            return result;
        }
    }
    return result;
}

std::string whatIsAsked(const QueuePath& queue) {
    return "The PPD of the queue " + quotedText(queue.name);
}

/// What an answer's beginning means, in the words of print servers.
ipp_status_t meaningOf(http_status_t status) {
    switch (status) {
    case HTTP_STATUS_UNAUTHORIZED:
        return IPP_STATUS_ERROR_NOT_AUTHENTICATED;
    case HTTP_STATUS_FORBIDDEN:
        return IPP_STATUS_ERROR_FORBIDDEN;
    default:
        return IPP_STATUS_ERROR_INTERNAL;
    }
}

/// Asks whether the queue exists. Of a class, `queue` becomes the first member, whose PPD stands for the class's.
std::string askForQueue(QueuePath& queue, const Server& server, Connection& connection, const JobLimits& limits) {
    Message request = question(IPP_OP_GET_PRINTER_ATTRIBUTES, {"printer-name", "member-names"});
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, queue.uri.c_str());
    const Message response = connection.ask(std::move(request), "/");
    if (response && ippGetStatusCode(response.get()) == IPP_STATUS_ERROR_NOT_FOUND)
        return "The queue " + quotedText(queue.name) + " on " + server.name + " does not exist: choose another queue.";
    if (!response || ippGetStatusCode(response.get()) > IPP_STATUS_OK_CONFLICTING)
        return noAnswer(whatIsAsked(queue), server, connection, limits, cupsLastError());
    if (ipp_attribute_t* members = ippFindAttribute(response.get(), "member-names", IPP_TAG_NAME))
        return readQueue(ippGetString(members, 0, nullptr), queue);
    return {};
}

} // namespace

NamedDefault defaultOfEnvironment() {
    constexpr std::string_view kEveryonesPrinter = "lp"; // set by old systems for everyone: nobody's wish
    for (const char* variable : {"LPDEST", "PRINTER"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr || *value == '\0' ||
            (value == kEveryonesPrinter && std::string_view(variable) == "PRINTER"))
            continue;
        const std::string_view name(value);
        const std::size_t slash = name.find('/');
        return {.variable = variable,
                .queue = std::string(name.substr(0, slash)),
                .instance = std::string(slash == std::string_view::npos ? "" : name.substr(slash + 1))};
    }
    return {};
}

QueueList listQueues(const std::string& address, const JobLimits& given, const PasswordPrompt& prompt) {
    const JobLimits limits = boundedLimits(given);
    QueueList list;
    Server server;
    list.error = readServer(address, server);
    if (!list.error.empty())
        return list;
    const PasswordAnswers passwords(prompt, server.name);
    Connection connection(server, limits.connect, limits.response);
    if (!connection.isOpen()) {
        list.error = connection.unreachable(server);
        return list;
    }
    const Message response =
        connection.ask(question(IPP_OP_CUPS_GET_PRINTERS, {"printer-name", "job-template", "printer-defaults"}), "/");
    const ipp_status_t status = response ? ippGetStatusCode(response.get()) : cupsLastError();
    if (response && status == IPP_STATUS_ERROR_NOT_FOUND)
        return list; // a server without queues
    if (!response || status > IPP_STATUS_OK_CONFLICTING) {
        list.error = noAnswer(kTheQueues, server, connection, limits, status);
        return list;
    }
    // The library may also know of printers that the network announces: only what this server has is printed on.
    const auto known = defaultsByQueue(response.get());
    const Destinations destinations(connection.http());
    for (const cups_dest_t& destination : destinations)
        if (const auto found = known.find(destination.name); found != known.end())
            list.queues.push_back(queueOf(destination, found->second));
    // The library itself forgets the environment where the user's own default is the same.
    if (const NamedDefault named = defaultOfEnvironment(); !named.variable.empty())
        for (Queue& queue : list.queues)
            queue.isDefault = queue.name == named.queue && queue.instance == named.instance;
    if (list.queues.size() < known.size())
        list.error = noAnswer(kTheQueues, server, connection, limits, cupsLastError());
    std::ranges::sort(list.queues, {}, [](const Queue& each) { return std::pair(each.name, each.instance); });
    return list;
}

FetchedPpd fetchPpd(const QueueAddress& address, const JobLimits& given, const PasswordPrompt& prompt) {
    const JobLimits limits = boundedLimits(given);
    Server server;
    QueuePath queue;
    FetchedPpd result{.text = {}, .error = readServer(address.server, server)};
    if (result.error.empty())
        result.error = readQueue(address.queue, queue);
    if (!result.error.empty())
        return result;
    const PasswordAnswers passwords(prompt, server.name);
    Connection connection(server, limits.connect, limits.response);
    if (!connection.isOpen()) {
        result.error = connection.unreachable(server);
        return result;
    }
    result.error = askForQueue(queue, server, connection, limits);
    if (!result.error.empty())
        return result;
    Download ppd = download(connection, "/printers/" + queue.name + ".ppd");
    if (ppd.tooLarge)
        result.error = whatIsAsked(queue) + " on " + server.name + " is larger than 4 MB: have a proper one installed.";
    else if (ppd.status == HTTP_STATUS_OK)
        result.text = std::move(ppd.text);
    else if (ppd.status != HTTP_STATUS_NOT_FOUND)
        result.error = noAnswer(whatIsAsked(queue), server, connection, limits, meaningOf(ppd.status));
    return result;
}

} // namespace host
