#pragma once

#include "host/command_line/dialog_request.h"
#include "host/jobs/queues.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

class QObject;

namespace host {

/// A printer that the dialog offers: a queue with its PPD, or a PPD whose jobs go to a folder.
struct Printer {
    std::string name;                  ///< for the user
    std::string ppdPath;               ///< the PPD's file, or
    std::string ppdText;               ///< its text
    std::vector<JobOption> options;    ///< kept for the queue
    std::optional<QueueAddress> queue; ///< none: prints to a folder
    std::string instance{};            ///< of the queue: the same printer with options of the user's
    bool isDefault = false;
    bool isSample = false;
};

/// The sample printers that belong to this program, ordered by their files' names.
std::vector<Printer> samplePrinters();

/// Looks for queues and fetches their PPDs in a thread of its own.
class PrinterSearch {
public:
    struct Found {
        std::vector<Printer> printers; ///< a queue that has a PPD
        std::string error;             ///< one sentence; mostly empty
        bool isLast = false;
    };

    PrinterSearch() = default;
    PrinterSearch(const PrinterSearch&) = delete;
    PrinterSearch& operator=(const PrinterSearch&) = delete;
    /// Waits for the request that is under way.
    ~PrinterSearch();

    /// Tells each finding in the thread of the receiver, as long as that lives: the preferred queue first, else the
    /// default one.
    void start(const std::string& server, const std::string& preferred, QObject& receiver,
               std::function<void(const Found&)> tell);

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
    std::thread thread_;
};

} // namespace host
