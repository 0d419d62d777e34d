#include "tests/support/fake_print_server.h"

#include <array>
#include <cerrno>
#include <cups/cups.h>
#include <memory>
#include <netinet/in.h>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace test_support {
namespace {

constexpr int kJob = 7; // the number that each job gets
constexpr std::string_view kPage = "<html>hello</html>";
constexpr const char* kQueue = "Recorder";

using Message = std::unique_ptr<ipp_t, void (*)(ipp_t*)>;

Message goodAnswer(ipp_t* request) {
    Message answer(ippNewResponse(request), &ippDelete);
    if (ippGetOperation(request) == IPP_OP_CUPS_GET_PRINTERS) {
        ippAddString(answer.get(), IPP_TAG_PRINTER, IPP_TAG_NAME, "printer-name", nullptr, kQueue);
        // A queue of which no more is told costs libcups a byte that it does not give back.
        ippAddString(answer.get(), IPP_TAG_PRINTER, IPP_TAG_TEXT, "printer-info", nullptr, kQueue);
        return answer;
    }
    ippAddInteger(answer.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-id", kJob);
    ippAddInteger(answer.get(), IPP_TAG_JOB, IPP_TAG_ENUM, "job-state", IPP_JSTATE_PROCESSING);
    return answer;
}

void sendAnswer(http_t* http, ipp_t* request) {
    const Message answer = goodAnswer(request);
    httpClearFields(http);
    httpSetField(http, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
    httpSetLength(http, ippLength(answer.get()));
    httpWriteResponse(http, HTTP_STATUS_OK);
    ippWrite(http, answer.get());
    httpFlushWrite(http);
}

void sendCutAnswer(http_t* http) {
    httpClearFields(http);
    httpSetField(http, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
    httpSetLength(http, 100);
    httpWriteResponse(http, HTTP_STATUS_OK);
    httpWrite2(http, "\x02\x00\x00", 3);
    httpFlushWrite(http);
}

void sendText(http_t* http, const char* type, std::string_view text) {
    httpClearFields(http);
    httpSetField(http, HTTP_FIELD_CONTENT_TYPE, type);
    httpSetLength(http, text.size());
    httpWriteResponse(http, HTTP_STATUS_OK);
    httpWrite2(http, text.data(), text.size());
    httpFlushWrite(http);
}

void sendQuestionForPassword(http_t* http) {
    httpClearFields(http);
    httpSetField(http, HTTP_FIELD_WWW_AUTHENTICATE, "Basic realm=\"fake\"");
    httpSetLength(http, 0);
    httpWriteResponse(http, HTTP_STATUS_UNAUTHORIZED);
    httpFlushWrite(http);
}

} // namespace

FakePrintServer::FakePrintServer(std::map<int, Reply> replies, std::string password, std::string ppd,
                                 std::chrono::milliseconds pause)
    : replies_(std::move(replies)), password_(std::move(password)), ppd_(std::move(ppd)), pause_(pause) {
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (listener_ < 0 || ::bind(listener_, generic, length) != 0 || ::listen(listener_, 16) != 0 ||
        ::getsockname(listener_, generic, &length) != 0)
        throw std::runtime_error("fake print server: " + std::generic_category().message(errno));
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { acceptConnections(); });
}

FakePrintServer::~FakePrintServer() {
    stopListening();
    acceptor_.join();
    {
        const std::lock_guard lock(mutex_);
        for (http_t* connection : connections_)
            ::shutdown(httpGetFd(connection), SHUT_RDWR);
    }
    for (std::thread& worker : workers_) // the acceptor has ended: no more are added
        worker.join();
    ::close(listener_);
}

std::vector<int> FakePrintServer::asked() const {
    const std::lock_guard lock(mutex_);
    return asked_;
}

std::uint64_t FakePrintServer::documentBytes() const {
    const std::lock_guard lock(mutex_);
    return documentBytes_;
}

void FakePrintServer::stopListening() const {
    ::shutdown(listener_, SHUT_RDWR); // ends the acceptor, too
}

void FakePrintServer::acceptConnections() {
    while (http_t* connection = httpAcceptConnection(listener_, 1)) {
        const std::lock_guard lock(mutex_);
        connections_.push_back(connection);
        workers_.emplace_back([this, connection] {
            while (answerRequest(connection)) {
            }
            const std::lock_guard ending(mutex_);
            connections_.remove(connection);
            httpClose(connection);
        });
    }
}

bool FakePrintServer::knowsPassword(http_t* http) const {
    std::array<char, 1024> encoded{};
    httpEncode64_2(encoded.data(), encoded.size(), password_.data(), static_cast<int>(password_.size()));
    return httpGetField(http, HTTP_FIELD_AUTHORIZATION) == std::string("Basic ") + encoded.data();
}

bool FakePrintServer::answerRequest(http_t* http) {
    std::array<char, HTTP_MAX_URI> resource{};
    const http_state_t request = httpReadRequest(http, resource.data(), resource.size());
    if (request != HTTP_STATE_POST && request != HTTP_STATE_GET)
        return false;
    http_status_t status = HTTP_STATUS_CONTINUE;
    while (status == HTTP_STATUS_CONTINUE)
        status = httpUpdate(http);
    if (status != HTTP_STATUS_OK)
        return false;
    if (!password_.empty() && !knowsPassword(http)) {
        sendQuestionForPassword(http);
        return false;
    }
    std::this_thread::sleep_for(pause_);
    if (request == HTTP_STATE_GET) {
        sendText(http, "application/vnd.cups-ppd", ppd_);
        return true;
    }
    if (httpGetExpect(http) == HTTP_STATUS_CONTINUE)
        httpWriteResponse(http, HTTP_STATUS_CONTINUE);
    const Message question(ippNew(), &ippDelete);
    ipp_state_t state = IPP_STATE_IDLE;
    while (state != IPP_STATE_DATA && state != IPP_STATE_ERROR)
        state = ippRead(http, question.get());
    if (state == IPP_STATE_ERROR)
        return false;
    const int operation = ippGetOperation(question.get());
    const auto chosen = replies_.find(operation);
    const Reply reply = chosen == replies_.end() ? Reply::Good : chosen->second;
    {
        const std::lock_guard lock(mutex_);
        asked_.push_back(operation);
    }
    if (reply == Reply::HangUpAtOnce)
        return false;
    std::array<char, 16 * 1024> piece{};
    for (ssize_t count = 0; (count = httpRead2(http, piece.data(), piece.size())) > 0;) {
        std::this_thread::sleep_for(pause_);
        const std::lock_guard lock(mutex_);
        documentBytes_ += static_cast<std::uint64_t>(count);
    }
    switch (reply) {
    case Reply::Good:
        sendAnswer(http, question.get());
        return true;
    case Reply::Silence:
        ::recv(httpGetFd(http), piece.data(), 1, 0); // until the other side or this object ends it
        return false;
    case Reply::CutAnswer:
        sendCutAnswer(http);
        return false;
    case Reply::WebPage:
        sendText(http, "text/html", kPage);
        return true;
    case Reply::Die:
        stopListening();
        return false;
    case Reply::HangUp:
    case Reply::HangUpAtOnce:
        return false;
    }
    return false;
}

} // namespace test_support
