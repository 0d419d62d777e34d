#pragma once

#include "host/session/session.h"
#include "host/window/printers.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace host {

/// What a session begins with beside its printer's defaults.
struct StartChoices {
    std::vector<JobOption> choices;  ///< by the names of job options; of equal names the last one holds
    std::vector<JobOption> preset{}; ///< as those that are given, before them; what holds already is left as it is
    std::vector<JobOption> given;    ///< the same, to be made on the panels' controls once they are there
    /// The same, of which only what is the job's own counts and no choice of the printer's options.
    std::vector<JobOption> attributes{};
    /// Nothing else holds: of what is kept for the printer only the job's fields count.
    bool areAll = false;
    std::optional<printing::PrintSettings> settings = printing::PrintSettings();
    std::optional<printing::Paper> freePaper; ///< a size in points that stands for no page size of the PPD
};

/// What the user has chosen in a session, for a session with another printer.
StartChoices choicesOfSession(Session& session);

/// A free paper of this size in points.
printing::Paper freePaper(double width, double height);

/// How the window's sessions are opened.
struct SessionSurroundings {
    std::filesystem::path bundle;
    std::vector<std::string> languages;
    toolkit::UserDefaults* userDefaults = nullptr;
    AlertPresenter* presenter = nullptr;
    double windowHeight = 0; ///< points
};

/// A session, or why there is none.
struct StartedSession {
    std::shared_ptr<Session> session; ///< null where the printer or the bundle cannot be used
    std::string error;                ///< why, in one sentence
    /// What is no choice of the PPD and no print setting: it goes into each job as it stands.
    std::vector<JobOption> attributes;
    JobRequest fields{}; ///< what is kept for the queue beside its options: copies, priority, holding time, title
    std::vector<printing::MarkedChoice> forPanels; ///< of what was given: what the panels manage or answer
    std::set<std::string> presetsOptions{};        ///< of these, those that only the preset names
    std::vector<std::string> problems;             ///< a sentence for each that was given and cannot be used
};

/// What every session of a printer is made of, whatever is chosen: read from files, without a window.
struct SessionParts {
    std::shared_ptr<PlugIn> plugIn;
    std::unique_ptr<printing::PrinterDescription> description; ///< its defaults are marked
    std::string error;                                         ///< where one of them is null: why, in one sentence
};

SessionParts readSessionParts(const Printer& printer, const SessionSurroundings& surroundings);

/// A session for the printer whose parts these are, with those of the choices that it has. A printer with none of the
/// panels' options gets no panels.
StartedSession startSession(SessionParts parts, const Printer& printer, const StartChoices& start,
                            const SessionSurroundings& surroundings);

} // namespace host
