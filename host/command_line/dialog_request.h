#pragma once

#include "host/jobs/job.h"

#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// What a print dialog in a window is opened with. It knows no windowing system: the module that draws the dialog is
/// loaded when one is needed.
struct DialogRequest {
    std::vector<std::string> documents{}; ///< paths of readable files, in the order in which they are printed
    std::string title{};                  ///< empty: the first document's name
    std::string printer{};                ///< a queue's name, or empty: the default one
    std::string instance{};               ///< of the queue, or empty
    std::string server{};                 ///< see QueueAddress::server
    std::string ppd{};                    ///< the path of a PPD that stands for the queue's; mostly empty
    std::string folder{};                 ///< print to this folder instead of a queue; mostly empty
    std::vector<JobOption> choices{};     ///< as they were given, in that order; of equal names the last one holds
    std::string preset{};                 ///< of the queue, chosen before the choices; mostly empty
    std::vector<JobOption> presetChoices{};
    bool looksForPreset = false;    ///< the server wants a password for its queues: the preset is looked for with them
    int copies = 0;                 ///< 0: as the preset or the queue keeps them, else 1
    int priority = 0;               ///< see JobRequest::priority
    std::string holdUntil{};        ///< see JobRequest::holdUntil
    bool isSilent = false;          ///< the jobs' numbers are not written to standard output
    std::filesystem::path bundle{}; ///< the plug-in bundle
};

/// The version of DialogRequest and of the entry. A module exports the one that it was built with; another is refused.
inline constexpr int kDialogInterfaceVersion = 4;

/// The module's exported names: an `extern "C" const int`, and the entry.
inline constexpr const char* kDialogVersionSymbol = "CVPrintDialogInterfaceVersion";
inline constexpr const char* kDialogEntrySymbol = "CVRunPrintDialog";

/// The type of the module's entry. It shows the dialog, prints as the user says, and returns the program's exit
/// status: 0 where the user printed or cancelled.
using DialogEntry = int(const DialogRequest& request);

} // namespace host

extern "C" int CVRunPrintDialog(const host::DialogRequest& request);
