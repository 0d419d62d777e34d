#pragma once

#include "host/jobs/passwords.h"
#include "host/jobs/queue_submission.h"

#include <string>
#include <vector>

namespace host {

/// Where a job stands that was sent.
enum class JobStage { Unknown, Waiting, Held, Printing, Stopped, Cancelled, Failed, Printed };

/// What the printer or its queue lacks while a job waits.
enum class Hindrance {
    OutOfPaper,
    PaperNeeded,
    PaperJam,
    InputTrayMissing,
    OutputTrayFull,
    OutputTrayMissing,
    OutOfInk,
    OutOfToner,
    WasteInkFull,
    CoverOpen,
    DoorOpen,
    PrinterOpen,
    Offline,
    NoAnswer,
    NotReached,
    SwitchedOff,
    DriverIncomplete,
    ServerDiskFull,
    Count, // how many there are
};

/// What a server says of a job that was sent.
struct JobStatus {
    JobStage stage = JobStage::Unknown; ///< unknown where the server answers, but knows the job no more
    bool wantsPassword = false;         ///< held until authenticateJob() gives one
    bool isHindered = false;            ///< it needs somebody: the queue stands, or the printer wants paper, ink ...
    bool isQueuePaused = false;
    std::vector<Hindrance> hindrances{}; ///< of a job that is not over
    std::string heldUntil{};             ///< "night", "18:30" ...; empty: until it is released. Of a held job
    std::string serversWords{};          ///< what the server says besides, in its own words; plain text, mostly empty
    int impressions = 0;                 ///< sides printed so far, where the printer counts them
    std::string words{};                 ///< all of it as one English sentence for people
    std::string error{};                 ///< one sentence: why nothing could be learnt; the rest says nothing then

    /// Nothing will happen to the job any more.
    [[nodiscard]] bool isOver() const {
        return stage == JobStage::Unknown || stage == JobStage::Cancelled || stage == JobStage::Failed ||
               stage == JobStage::Printed;
    }
};

/// Asks the server (see QueueAddress::server) once for the job of this number. Blocks no longer than the limits allow.
[[nodiscard]] JobStatus jobStatus(const std::string& server, int jobId, const JobLimits& limits = {},
                                  const PasswordPrompt& prompt = {});

} // namespace host
