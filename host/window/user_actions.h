#pragma once

#include "host/session/session.h"
#include "host/window/window_texts.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace host {

using Marks = std::vector<std::pair<std::string, std::optional<std::string>>>;

/// "Media Type: Glossy", in the PPD's own words.
QString choiceInWords(const printing::PrinterDescription& description, const std::string& option,
                      const std::optional<std::string>& choice, const Language& language);

/// What the user chose, for telling what followed from it.
struct Cause {
    std::vector<printing::MarkedChoice> chosen{};
    QString words{}; ///< the name of several choices that were made at once; empty: the first one, in the PPD's words
};

/// What became of other options because the user chose something, as one sentence: the net change from one set of
/// marks to the other. Of choices made at once also those that did not hold. Empty where nothing else changed.
QString changeInWords(const printing::PrinterDescription& description, const Marks& before, const Marks& after,
                      const Cause& cause, const Language& language);

/// Why a choice was refused, as a user reads it.
QString refusalInWords(const printing::PrinterDescription& description, const RefusedMark& refusal,
                       const Language& language);

/// What stood before a step of the user's, so that it can be put back: marks, and what the host itself keeps.
struct StepBefore {
    Marks marks;
    std::optional<printing::Paper> paper;
    std::optional<printing::SettingValue> colorMatching, scaledTo;
    /// Of a step that began the session anew: goes back instead of putBack().
    std::function<void()> goBack{};

    static StepBefore of(Session& session);
    /// Puts all of it back. Paper and two-sided printing are told to the panels, which are to be restored afterwards.
    void putBack(Session& session) const;
    /// The marks that differ from the session's.
    [[nodiscard]] std::vector<printing::MarkedChoice> differing(const Session& session) const;
};

/// Carries out what the user does, one thing at a time, and tells what followed from it.
class UserActions {
public:
    /// `canUndo`: the message tells of a step that takeUndo() gives.
    using Teller = std::function<void(const QString& message, bool canUndo)>;

    UserActions(const Language& language, Teller tell) : language_(language), tell_(std::move(tell)) {}

    /// Null while there is no session.
    void setSession(Session* session);

    /// Runs the action, then tells the net change of marks, or the reason of a refusal. What the user chose is the
    /// cause where one is given, else the first choice that a panel asked for. While another action runs, as when an
    /// alert waits for its answer, the action waits for its turn, and the answer is false.
    bool run(const std::function<void()>& action, const Cause& cause = {});
    [[nodiscard]] bool isRunning() const { return running_; }

    /// Tells of a step that began the session anew, with the way back.
    void tellStep(const QString& message, std::function<void()> goBack);

    /// Does it now, or as soon as no action runs: for what comes from elsewhere.
    void whenIdle(std::function<void()> what);

    /// What stood before the step that was told last; nullopt where it cannot be undone. It can be taken once.
    [[nodiscard]] std::optional<StepBefore> takeUndo() { return std::exchange(undo_, std::nullopt); }

private:
    void tellWhatFollowed(const StepBefore& before, Cause cause);
    void tell(const QString& message, std::optional<StepBefore> undo);

    Language language_;
    Teller tell_;
    Session* session_ = nullptr;
    bool running_ = false;
    std::deque<std::function<void()>> waiting_;
    std::optional<StepBefore> undo_;
};

} // namespace host
