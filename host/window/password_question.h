#pragma once

#include "host/jobs/passwords.h"
#include "host/window/window_texts.h"

#include <memory>
#include <string>

class QWidget;

namespace host {

/// The server, as it was told in the question for a password that the user gave up; empty as long as none was. The
/// thread that asks writes it, and has ended when it is read.
using GivenUpQuestion = std::shared_ptr<std::string>;

/// Asks the user for names and passwords, in windows modal to this one. What was answered for a server is answered
/// again, unasked, as long as it is taken there.
class PasswordQuestions {
public:
    /// The window is borrowed.
    PasswordQuestions(QWidget& window, const Language& language);
    PasswordQuestions(const PasswordQuestions&) = delete;
    PasswordQuestions& operator=(const PasswordQuestions&) = delete;
    ~PasswordQuestions() { refuse(); }

    /// For other threads than the window's, which wait for the answer while the window's events run. The button that
    /// agrees is called as the action. A prompt may outlive this object: it gives up then.
    [[nodiscard]] PasswordPrompt prompt(Text action) const;
    /// The same for one request, noting what is given up.
    [[nodiscard]] PasswordPrompt prompt(Text action, GivenUpQuestion givenUp) const;
    /// The error of such a request, if any; where its question was given up, that, and how to be asked again.
    [[nodiscard]] std::string errorInWords(const std::string& error, const GivenUpQuestion& givenUp, Text again) const;
    /// Answers what is known, and gives up where nothing is, or it is not taken.
    [[nodiscard]] PasswordPrompt unasked() const;
    /// Gives up every question that is open, and those to come. Call it in the window's thread.
    void refuse();

private:
    class Desk;
    Language language_;
    std::shared_ptr<Desk> desk_;
};

} // namespace host
