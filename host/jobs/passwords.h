#pragma once

#include <functional>
#include <optional>
#include <string>

namespace host {

/// What a server, or the printer behind it, asks for before it takes a job. Plain texts, for people.
struct PasswordQuestion {
    std::string server;
    std::string user;     ///< under whose name the server was asked
    bool isAgain = false; ///< the answer before this one was not taken
};

struct Credentials {
    std::string user;
    std::string password;
};

/// Answers the question; nullopt gives up. Is called on the thread that talks to the server, which waits meanwhile, and
/// must not throw. A host without somebody to ask leaves it empty: then the failure says that a password is wanted.
using PasswordPrompt = std::function<std::optional<Credentials>(const PasswordQuestion&)>;

} // namespace host
