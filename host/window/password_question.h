#pragma once

#include "host/jobs/passwords.h"
#include "host/window/window_texts.h"

#include <memory>

class QWidget;

namespace host {

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
    /// Answers what is known, and gives up where nothing is, or it is not taken.
    [[nodiscard]] PasswordPrompt unasked() const;
    /// Gives up every question that is open, and those to come. Call it in the window's thread.
    void refuse();

private:
    class Desk;
    std::shared_ptr<Desk> desk_;
};

} // namespace host
