#pragma once

#include <chrono>
#include <cstdint>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

typedef struct _http_s http_t; // the printing library's own, kept out of this header's readers

namespace test_support {

/// What a fake server does where a request asks for its answer.
enum class Reply {
    Good,         ///< the answer that a print server gives to a job that it takes
    HangUp,       ///< reads all of the request, then ends the connection without a word
    HangUpAtOnce, ///< the same, but reads nothing of the document
    Die,          ///< reads all of the request, then ends, and nobody can connect any more
    Silence,      ///< reads all of the request and stays connected
    CutAnswer,    ///< breaks off in the middle of an answer
    WebPage,      ///< answers with a page, as a server of another kind does
};

/// A print server that takes one job after the other and misbehaves at chosen moments. On the loopback interface; ends
/// with this object. Failures to set it up are exceptions (std::runtime_error).
class FakePrintServer {
public:
    /// The reply to each IPP operation, by its number; the good one to those that are not named. With a password, as
    /// "user:password", nothing is answered but to who gives it. It has one queue, "Recorder", and every file is its
    /// PPD. It pauses before each answer and before each 16 kB of a document that it takes.
    explicit FakePrintServer(std::map<int, Reply> replies, std::string password = {},
                             std::string ppd = "*PPD-Adobe: \"4.3\"\n", std::chrono::milliseconds pause = {});
    ~FakePrintServer();
    FakePrintServer(const FakePrintServer&) = delete;
    FakePrintServer& operator=(const FakePrintServer&) = delete;

    [[nodiscard]] std::string hostAndPort() const { return "127.0.0.1:" + std::to_string(port_); }
    /// The operations that were asked for, in order.
    [[nodiscard]] std::vector<int> asked() const;
    /// How many bytes of documents arrived.
    [[nodiscard]] std::uint64_t documentBytes() const;

private:
    void acceptConnections();
    /// False where the connection is to end.
    bool answerRequest(http_t* http);
    void stopListening() const;

    [[nodiscard]] bool knowsPassword(http_t* http) const;

    const std::map<int, Reply> replies_;
    const std::string password_, ppd_;
    const std::chrono::milliseconds pause_;
    int listener_ = -1;
    int port_ = 0;
    mutable std::mutex mutex_; // guards what follows, save the acceptor
    std::vector<int> asked_;
    std::uint64_t documentBytes_ = 0;
    std::list<http_t*> connections_;
    std::list<std::thread> workers_;
    std::thread acceptor_;
};

} // namespace test_support
