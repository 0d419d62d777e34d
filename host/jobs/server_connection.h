#pragma once

// Private to this room: how a print server is found, connected to and asked.

#include "host/jobs/queue_submission.h"

#include <chrono>
#include <cups/cups.h>
#include <memory>
#include <string>

namespace host {

inline constexpr int kDefaultPort = 631;

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
    bool timedOut() const { return timedOut_; }

    /// Null without an answer. An answer may still be a refusal.
    Message ask(Message request, const std::string& resource);
    /// The sentence that says why there is no connection.
    std::string unreachable(const Server& server) const;

private:
    static int giveUp(http_t*, void* self);

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

} // namespace host
