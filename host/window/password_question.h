#pragma once

#include "host/jobs/passwords.h"
#include "host/window/window_texts.h"

class QWidget;

namespace host {

/// Asks the user for a name and a password, in a window modal to this one. It is for another thread than the window's,
/// whose events must run meanwhile: that thread waits for the answer. The window is borrowed.
[[nodiscard]] PasswordPrompt passwordPrompt(QWidget& window, const Language& language);

} // namespace host
