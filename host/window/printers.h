#pragma once

#include "host/command_line/dialog_request.h"
#include "host/jobs/queues.h"
#include "host/window/password_question.h"

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// A printer that the dialog offers: a queue, or a PPD whose jobs go to a folder.
struct Printer {
    std::string name;                  ///< for the user
    std::string ppdPath;               ///< the PPD's file; empty: the queue's server has it
    std::string ppdText;               ///< what the server had; empty until it was fetched
    std::vector<JobOption> options;    ///< kept for the queue
    std::optional<QueueAddress> queue; ///< none: prints to a folder
    std::string instance{};            ///< of the queue: the same printer with options of the user's
    bool isDefault = false;
    bool isSample = false;

    [[nodiscard]] bool hasPpdOnServer() const { return queue && ppdPath.empty(); }
};

/// The sample printers that belong to this program, ordered by their files' names.
std::vector<Printer> samplePrinters();

/// Short enough to wait for when the window closes meanwhile.
inline constexpr JobLimits kSearchLimits = {.connect = std::chrono::seconds(3), .response = std::chrono::seconds(5)};

/// Asks a server for queues and PPDs in threads of its own; the user is asked where a server wants a password. Every
/// answer is told once, in the window's thread, as long as this object lives.
class PrinterSearch {
public:
    struct Found {
        std::vector<Printer> printers; ///< the server's queues, without their PPDs
        std::string error;             ///< one sentence; mostly empty
    };

    /// The questions are borrowed.
    explicit PrinterSearch(PasswordQuestions& passwords) : passwords_(passwords) {}
    PrinterSearch(const PrinterSearch&) = delete;
    PrinterSearch& operator=(const PrinterSearch&) = delete;
    /// Waits for the requests that are under way, after the questions are refused that these wait for.
    ~PrinterSearch() {
        *ended_ = true;
        passwords_.refuse();
    }

    void findQueues(const std::string& server, std::function<void(const Found&)> tell);
    void fetchPpdOf(const QueueAddress& address, std::function<void(const FetchedPpd&)> tell);

private:
    template <typename Answer>
    void ask(std::function<Answer()> question, std::function<void(const Answer&)> tell);

    PasswordQuestions& passwords_;
    std::shared_ptr<std::atomic<bool>> ended_ = std::make_shared<std::atomic<bool>>(false);
    std::vector<std::future<void>> requests_; ///< their ends are waited for
};

} // namespace host
