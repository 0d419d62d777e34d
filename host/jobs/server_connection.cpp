#include "host/jobs/server_connection.h"

#include "host/jobs/job_text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace host {
namespace {

constexpr std::size_t kMaximumQueueNameBytes = 127; // a server's own limit
constexpr std::size_t kMaximumHostNameBytes = 255;
constexpr std::chrono::milliseconds kShortestLimit{1}; // none at all would mean for ever
constexpr std::chrono::milliseconds kLongestWait{200}; // until we are asked whether to wait on
constexpr std::chrono::milliseconds kLongestLimit = std::chrono::hours(24);

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

using Addresses = std::unique_ptr<http_addrlist_t, void (*)(http_addrlist_t*)>;

thread_local PasswordAnswers* currentAnswers = nullptr;
thread_local std::chrono::steady_clock::duration timeOfUsers{}; // that this thread's prompts took

/// The time that passes for servers: it stands while a user is asked. The library waits also where it tells nothing of
/// it, so it is read from the clock.
std::chrono::steady_clock::time_point serversTime() {
    return std::chrono::steady_clock::now() - timeOfUsers;
}

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

} // namespace

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

std::string readQueue(const std::string& name, QueuePath& queue) {
    if (name.empty())
        return "No queue was named: choose the one to print on.";
    std::array<char, HTTP_MAX_URI> uri{};
    if (name.size() > kMaximumQueueNameBytes || name.find_first_of("/?# ") != std::string::npos ||
        hasControlCharacters(name) || !isUtf8(name) ||
        httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr, "localhost", 0,
                         "/printers/%s", name.c_str()) < HTTP_URI_STATUS_OK)
        return "There can be no queue " + quotedText(name) +
               ": its name has characters, or a length, that no queue's has.";
    queue.name = name;
    queue.uri = uri.data();
    // A dotted name would be taken for a way out of the folder. The request itself names the queue by its URI.
    queue.resource = name.starts_with('.') ? "/" : "/printers/" + name;
    return {};
}

JobLimits boundedLimits(const JobLimits& limits) {
    return {std::clamp(limits.connect, kShortestLimit, kLongestLimit),
            std::clamp(limits.response, kShortestLimit, kLongestLimit)};
}

Connection::Connection(const Server& server, std::chrono::milliseconds connect, std::chrono::milliseconds response)
    : connect_(connect), response_(response), http_(nullptr, &httpClose) {
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
        httpSetTimeout(http_.get(), std::chrono::duration<double>(std::min(response, kLongestWait)).count(),
                       &Connection::waitsOn, this);
        restartTime();
        return;
    }
    connectError_ = cupsLastErrorString();
    const std::chrono::milliseconds left =
        std::chrono::duration_cast<std::chrono::milliseconds>(connect - (std::chrono::steady_clock::now() - start));
    if (const int error = connectionError(addresses->addr, std::max(left, std::chrono::milliseconds(0))); error != 0)
        connectError_ = std::generic_category().message(error);
}

bool Connection::reconnect() {
    return httpReconnect2(http_.get(), static_cast<int>(connect_.count()), nullptr) == 0;
}

Message Connection::ask(Message request, const std::string& resource) {
    restartTime();
    return Message(cupsDoRequest(http_.get(), request.release(), resource.c_str()), &ippDelete);
}

std::string Connection::cause() const {
    if (wasGivenUp_)
        return "it was given up";
    if (timedOut_)
        return "the server gives no sign of life";
    // The library has no words for a connection that ended where an answer should have begun.
    if (cupsLastError() <= IPP_STATUS_OK_CONFLICTING || cupsLastErrorString() == std::generic_category().message(0))
        return "it hung up without an answer";
    return plainText(cupsLastErrorString(), 200);
}

std::string Connection::unreachable(const Server& server) const {
    return "No connection to " + server.name + " (" + plainText(connectError_, 200) +
           "): check that it runs and that its address is right.";
}

void Connection::restartTime() {
    lastSign_ = serversTime();
}

int Connection::waitsOn(http_t*, void* self) {
    auto& connection = *static_cast<Connection*>(self);
    connection.wasGivenUp_ = connection.goesOn_ && !connection.goesOn_();
    connection.timedOut_ = serversTime() - connection.lastSign_ >= connection.response_;
    return connection.wasGivenUp_ || connection.timedOut_ ? 0 : 1;
}

PasswordAnswers::PasswordAnswers(const PasswordPrompt& prompt, std::string server)
    : prompt_(prompt), server_(std::move(server)), outer_(std::exchange(currentAnswers, this)) {
    cupsSetPasswordCB2(&PasswordAnswers::answer, this);
}

PasswordAnswers::~PasswordAnswers() {
    currentAnswers = outer_;
    cupsSetPasswordCB2(outer_ == nullptr ? nullptr : &PasswordAnswers::answer, outer_); // none: the library's own
    cupsSetUser(outer_ != nullptr && outer_->given_ ? outer_->given_->user.c_str() : nullptr);
}

const char* PasswordAnswers::answer(const char*, http_t*, const char*, const char*, void* self) {
    auto& answers = *static_cast<PasswordAnswers*>(self);
    const bool isAgain = answers.given_.has_value();
    std::optional<Credentials> given;
    if (++answers.attempts_ > kPasswordAttempts)
        return nullptr;
    if (!isAgain && answers.outer_ != nullptr && answers.outer_->given_) {
        given = answers.outer_->given_;
    } else if (answers.prompt_) {
        const auto start = std::chrono::steady_clock::now();
        given = answers.prompt_(
            {.server = answers.server_, .user = plainText(cupsUser(), kMaximumTitleBytes), .isAgain = isAgain});
        timeOfUsers += std::chrono::steady_clock::now() - start;
    }
    if (!given) {
        answers.attempts_ = kPasswordAttempts; // whoever gave up is not asked again
        return nullptr;
    }
    answers.given_ = std::move(given); // the library borrows the text
    cupsSetUser(answers.given_->user.c_str());
    return answers.given_->password.c_str();
}

} // namespace host
