#pragma once

#include "host/session/session.h"
#include "host/window/window_texts.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace host {

using Marks = std::vector<std::pair<std::string, std::optional<std::string>>>;

/// "Media Type: Glossy", in the PPD's own words.
QString choiceInWords(const printing::PrinterDescription& description, const std::string& option,
                      const std::optional<std::string>& choice, Language language);

/// What became of other options because the user chose something, as one sentence: the net change from one set of
/// marks to the other. Empty where nothing else changed.
QString changeInWords(const printing::PrinterDescription& description, const Marks& before, const Marks& after,
                      const std::optional<printing::MarkedChoice>& cause, Language language);

/// Why a choice was refused, as a user reads it.
QString refusalInWords(const printing::PrinterDescription& description, const RefusedMark& refusal, Language language);

/// Carries out what the user does, one thing at a time, and tells what followed from it.
class UserActions {
public:
    using Teller = std::function<void(const QString& message)>;

    UserActions(Language language, Teller tell) : language_(language), tell_(std::move(tell)) {}

    /// Null while there is no session.
    void setSession(Session* session) { session_ = session; }

    /// Runs the action, then tells the net change of marks, or the reason of a refusal. What the user chose is the
    /// cause where one is given, else the first choice that a panel asked for. While another action runs, as when an
    /// alert waits for its answer, nothing happens, and the answer is false.
    bool run(const std::function<void()>& action, const std::optional<printing::MarkedChoice>& cause = std::nullopt);
    [[nodiscard]] bool isRunning() const { return running_; }

    /// Does it now, or as soon as no action runs: for what comes from elsewhere.
    void whenIdle(std::function<void()> what);

private:
    void tellWhatFollowed(const Marks& before, std::optional<printing::MarkedChoice> cause);

    Language language_;
    Teller tell_;
    Session* session_ = nullptr;
    bool running_ = false;
    std::vector<std::function<void()>> waiting_;
};

} // namespace host
