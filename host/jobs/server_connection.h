#pragma once

// Private to this room: how a print server is found, connected to and asked.

#include "host/jobs/passwords.h"
#include "host/jobs/queue_submission.h"

#include <chrono>
#include <cups/cups.h>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace host {

inline constexpr int kDefaultPort = 631;
inline constexpr int kPasswordAttempts = 3; // the library itself would ask for ever

/// What to do where a server or a queue wants a password that was not given.
inline constexpr std::string_view kPasswordAdvice =
    "print where you can be asked for them, or ask its administrator for access";

using Message = std::unique_ptr<ipp_t, void (*)(ipp_t*)>;

/// A server to connect to: where it is, and how sentences call it.
struct Server {
    std::string host; ///< a name, a number or a socket's path
    int port = kDefaultPort;
    std::string name;
};

/// Empty, with `server` filled in, or the sentence that says what is wrong with the text.
std::string readServer(const std::string& text, Server& server);

/// A queue as requests name it.
struct QueuePath {
    std::string name;
    std::string uri;
    std::string resource;
};

/// Empty, with `queue` filled in, or the sentence that says why no queue can have this name.
std::string readQueue(const std::string& name, QueuePath& queue);

/// Limits that end some time, and are not over before they begin.
JobLimits boundedLimits(const JobLimits& limits);

/// A connection of our own: the library's shared one knows no time-outs.
class Connection {
public:
    Connection(const Server& server, std::chrono::milliseconds connect, std::chrono::milliseconds response);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool isOpen() const { return http_ != nullptr; }
    http_t* http() const { return http_.get(); }
    /// Connects anew, as a server wants it after a refusal. What it knows of the user stays known.
    bool reconnect();
    bool timedOut() const { return timedOut_; }

    /// Is asked, a few times a second, whether to wait on for a server that says nothing; false ends the request.
    void askWhileWaiting(std::function<bool()> goesOn) { goesOn_ = std::move(goesOn); }
    bool wasGivenUp() const { return wasGivenUp_; } ///< by that answer

    /// The server has shown that it lives, or begins to be asked: its time starts anew.
    void restartTime();

    /// Null without an answer. An answer may still be a refusal.
    Message ask(Message request, const std::string& resource);
    /// Why the last request got no answer, in a few words.
    std::string cause() const;
    /// The sentence that says why there is no connection.
    std::string unreachable(const Server& server) const;

private:
    static int waitsOn(http_t*, void* self);

    std::chrono::milliseconds connect_, response_;
    std::chrono::steady_clock::time_point lastSign_;
    std::function<bool()> goesOn_;
    bool timedOut_ = false;
    bool wasGivenUp_ = false;
    std::string connectError_;
    std::unique_ptr<http_t, void (*)(http_t*)> http_;
};

/// While it lives, this thread's servers get their passwords from the prompt, or none: the library itself would ask on
/// the terminal. What was answered to an outer object of the thread is tried first. The prompt is borrowed.
class PasswordAnswers {
public:
    PasswordAnswers(const PasswordPrompt& prompt, std::string server);
    ~PasswordAnswers();
    PasswordAnswers(const PasswordAnswers&) = delete;
    PasswordAnswers& operator=(const PasswordAnswers&) = delete;

private:
    static const char* answer(const char*, http_t*, const char*, const char*, void* self);

    const PasswordPrompt& prompt_;
    std::string server_;
    std::optional<Credentials> given_;
    int attempts_ = 0;
    PasswordAnswers* outer_;
};

} // namespace host
